#pragma once

#include "host/gfx/fountain_fill.h"

#include "svg/omissions.h"
#include "svg/paint.h"

namespace command {

/// The colour of the library for a colour of a drawing; its alpha is left to the caller.
CLR_COLORSPEC ToColor(const svg::Color& color) noexcept;

/// The fountain that paints a gradient. One in units of the shape's box has object bounds; one in user space
/// has document units of the shape's own user space, so that shapes of all sizes and places share it. What a
/// fountain cannot say is counted.
CGE_FOUNTAINFILL MapGradient(const svg::Gradient& gradient, svg::Omissions& omissions);

}  // namespace command
