#pragma once

#include "host/gfx/outline.h"

#include "fom/cairo_pointers.h"

namespace command {

/// How much larger than at 96 pixels to the inch a swatch shows an outline: 1 where that shows it well. Thick
/// and thin lines, long arrowheads and dashes are fitted.
double SampleEnlargement(const CGE_OUTLINE& pen);

/// Draws a line with corners, a curve and two ends into the rectangle from (0, 0) to the size in pixels, on a
/// ground that the pen's colour stands out from.
void PaintStrokeSample(CairoContext& target, const CGE_OUTLINE& pen, double width, double height);

}  // namespace command
