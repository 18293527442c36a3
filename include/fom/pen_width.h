#pragma once

#include "host/base/export.h"
#include "host/geometry/matrix.h"
#include "host/gfx/outline.h"

/// Fits a pen to the transformation of the object that it draws (docs/pen_width.md).
///
/// The nib is an ellipse: `width` across its long axis, `nibStretch` per cent of it across the other one,
/// turned by `nibAngle`. Mapped by `m` it is an ellipse again; width, stretch and angle become those of its
/// principal axes. Dot length and variable widths grow with the width, and a wideline's thread width is
/// mapped as a pen of its own. A stretch above 100 is taken at its word: the longer axis becomes the width.
///
/// Lengths round half up and saturate at 32 bits. A stretch that rounds to 0 and a nib that is mapped to
/// nothing become 100. The angle comes out in -90,000,000 to 89,999,999. Not finite: the record is left as it
/// is. Throws bad_alloc (widelines and variable widths), nothing changed. Null matrix: nothing.

/// Before the object's transformation is applied.
FOM_API void OUTPreAdjustPenWidth(CGE_OUTLINE& outline, const MATRIX* m);
/// The same fit, for a transformation that has been applied already. With the inverse matrix it undoes the
/// other, up to rounding of the fields.
FOM_API void OUTPostAdjustPenWidth(CGE_OUTLINE& outline, const MATRIX* m);
