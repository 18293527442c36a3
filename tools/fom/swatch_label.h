#pragma once

#include <string>

#include "host/gfx/fill.h"

namespace command {

/// What stands below a swatch: what the fill is, and a second line with details, which may be empty.
struct SwatchLabel {
    std::string name;
    std::string detail;
};

SwatchLabel LabelOf(const CGE_FILL& fill);

}  // namespace command
