#pragma once

#include "host/base/export.h"
#include "host/gfx/outline.h"

class WOutlineHandle;
class WRCOutlineList;

/// The outlines that new objects start with. Two switches of the host ("OutlineEndCapDefaultRound" and
/// "OutlineJoinDefaultRound") choose round caps and joins. Main thread only. Null records are left alone.

/// A solid hairline (762), black: RGB where `rgbBlack` is not 0, CMYK otherwise. The GUID stays.
FOM_API void OUTGetDefaultOutline(CGE_OUTLINE* outline, int rgbBlack);
/// The same as a new handle in `*handle`, which the caller owns, on an entry of `list` (null: the active
/// pool). What `*handle` held before is not freed. Throws bad_alloc with `*handle` as it was.
FOM_API void OUTGetDefaultOutline(WRCOutlineList* list, WOutlineHandle** handle, int rgbBlack);
/// The default of text: no outline, with a hairline's width for when it gets one.
FOM_API void OUTGetDefaultTextOutline(CGE_OUTLINE* outline, int rgbBlack);
/// OUTGetDefaultOutline with CMYK black.
FOM_API void OUTSetDefaultOutline(CGE_OUTLINE* outline);

/// Gives `*handle` one of the pens of the toolbox: 0 no outline, without arrowheads; 1 a hairline; 2 to 10
/// the widths 0.5, 1, 2, 4, 8, 12, 16, 20 and 24 points, with a round nib. An outline without a colour
/// becomes CMYK black. Other numbers and null do nothing; a null `*handle` becomes a new one in the active
/// pool, which the caller owns. Throws bad_alloc with everything as it was.
FOM_API void SetPresetPen(WOutlineHandle** handle, int n);
