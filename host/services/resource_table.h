#pragma once

#include "host/services/services.h"

namespace host {

/// The built-in English texts. Identifiers compare without regard to case.
class ResourceTable final : public ResourceStrings {
public:
    WString GetString(std::wstring_view identifier) const override;
};

}  // namespace host
