#pragma once

#include <string_view>

#include "host/geometry/rect.h"
#include "host/gfx/fill.h"

#include "fom/cairo_pointers.h"

namespace command {

/// The box of the object that is filled.
using ObjectBounds = VyrMath::BoundsT<double>;

/// Paints everything within the target's clip with a fill, from its record alone. The target's user space is
/// measured in document units, y pointing down; `object` is the box of the filled object there. A transform
/// of the pattern (a handle's tiling matrix) is the caller's: it belongs into the target's matrix. Nothing is
/// painted where the fill is none or transparent. Answers what is missing in the painting, in a few words:
/// mostly nothing. Throws bad_alloc; what is damaged in a record paints nothing. Main thread only.
std::string_view PaintFill(CairoContext& target, const CGE_FILL& fill, const ObjectBounds& object);

}  // namespace command
