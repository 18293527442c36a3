#pragma once

#include <string>

#include "host/gfx/fill.h"
#include "host/gfx/outline.h"

namespace command {

/// What stands below a swatch: what the fill is, and a second line with details, which may be empty.
struct SwatchLabel {
    std::string name;
    std::string detail;
};

SwatchLabel LabelOf(const CGE_FILL& fill);
/// `enlargement` is what the outline is shown with.
SwatchLabel LabelOf(const CGE_OUTLINE& pen, double enlargement);
/// "#ff0000", as it is displayed.
std::string ColorText(const CLR_COLORSPEC& color);

}  // namespace command
