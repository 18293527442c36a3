#pragma once

#include <span>

#include "host/gfx/outline.h"

#include "fom/cairo_pointers.h"
#include "fom/polyline.h"

namespace command {

/// Draws lines with an outline, from its record alone: colour, dashes, caps, joins, the nib as an ellipse,
/// and the arrowheads of open lines. The target's user space is measured in document units, y pointing down,
/// so that nib angles run from x to y; an arrowhead's left is the left that is seen. Widelines and variable
/// widths are drawn as a plain line. No outline draws nothing. Throws bad_alloc; what is damaged in a record
/// draws nothing. Main thread only.
void PaintOutline(CairoContext& target, const CGE_OUTLINE& pen, std::span<const Polyline> lines);

/// Traces the nib, centred on (0, 0), as a path of the target.
void TraceNib(CairoContext& target, const CGE_OUTLINE& pen);

/// How far from the end of a line, in document units, its arrowheads reach at most.
double ArrowReach(const CGE_OUTLINE& pen);

/// One repeat of the dashes, in document units; 0 for an unbroken line.
double DashRepeat(const CGE_OUTLINE& pen) noexcept;

}  // namespace command
