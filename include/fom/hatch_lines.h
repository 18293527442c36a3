#pragma once

#include "host/base/export.h"
#include "host/geometry/matrix.h"
#include "host/gfx/hatch_fill.h"

/// Geometry of hatch lines under transforms of the object that they fill.
namespace VyrFOM {

/// Each line family turns, spaces and shifts with the object: the angle becomes that of the mapped line
/// direction; the spacing across the lines and the offset along them, by which each line's dashes start
/// beside its neighbour's, become those of the mapped neighbours; the origin follows the map
/// (docs/hatch_lines.md). Results round half away from zero and saturate at 32 bits. A singular or non-finite
/// matrix, or one beyond 1e100, changes nothing.
FOM_API void TransformHatchLines(CGE_HATCHFILL& hatch, const MATRIX& m);
/// The pens follow the object's transformation, each as OUTPreAdjustPenWidth and OUTPostAdjustPenWidth
/// (fom/pen_width.h). A matrix that changes no lines changes no pens. Throws bad_alloc, nothing changed.
FOM_API void PreAdjustHatchPenWidths(CGE_HATCHFILL& hatch, const MATRIX& m);
FOM_API void PostAdjustHatchPenWidths(CGE_HATCHFILL& hatch, const MATRIX& m);
/// The pens' own transformations become the identity.
FOM_API void ClearHatchLineTransfos(CGE_HATCHFILL& hatch);

}  // namespace VyrFOM
