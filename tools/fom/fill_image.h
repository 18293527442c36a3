#pragma once

#include <string>

#include "host/gfx/pattern_fills.h"

namespace command {

/// The image of a colour bitmap as a "data:" URI of a PNG file; empty where there is none that can be
/// encoded. Throws bad_alloc.
std::string ImageUri(const CGE_COLORBMPFILL& bitmap);

}  // namespace command
