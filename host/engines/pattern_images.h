#pragma once

#include "host/services/services.h"

namespace host {

/// Three built-in seamless bitmap patterns of 64 by 64 RGB pixels, painted each time they are asked for.
class BuiltInPatternImages final : public PatternImages {
public:
    std::vector<WString> GetBitmapNames() override;
    HUDIIMAGE GetImage(std::wstring_view name) override;
};

}  // namespace host
