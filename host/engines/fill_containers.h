#pragma once

#include "host/services/services.h"

namespace host {

/// Files of extension "fill" (docs/formats/fill_container.md), and the files of the import filters: a PNG
/// image reads as a colour bitmap, an SVG drawing as a vector. What a file is, its content tells.
class StandaloneFillContainers final : public FillContainers {
public:
    WString GetExtension() const override { return WString(L"fill"); }
    std::optional<int> ReadSubtype(std::wstring_view path) override;
};

}  // namespace host
