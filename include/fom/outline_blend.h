#pragma once

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/gfx/outline.h"

/// The outline `factor` (held within 0 and 1; 0 is `a`, 1 is `b`) of the way from `a` to `b`, by the rules of
/// the fills' blends (fom/fill_blend.h). Width, nib, dot length, miter limit, matrices, colour and, where
/// both have as many elements, dash patterns and variable widths blend; what is no number comes from the
/// nearer end, from `b` at the middle, and so do arrowheads, screens, widelines and patterns of different
/// counts. On the way, no outline counts as the other outline with a width of 0. False, `out` untouched, for
/// a factor that is no number and for colours that do not blend. `out` may be `a` or `b`. The GUID of `out`
/// stays. Throws bad_alloc, `out` untouched. Main thread only.
FOM_API bool BlendOutline(const ColorContext& context, CGE_OUTLINE& out, const CGE_OUTLINE& a,
                          const CGE_OUTLINE& b, double factor);
