#pragma once

#include "host/base/export.h"
#include "host/gfx/fill.h"

class WFillHandle;

/// The defaults of fill records (docs/fills.md has the values). Each does nothing for a null record; what the
/// record owned in the sub-record that is set is freed. They read host services, so they belong to the host's
/// main thread. One that throws bad_alloc leaves the sub-record as it was; a pattern-data block that cannot
/// be had is null, and the rest of the default stands.

/// Sets the kind and gives its sub-record the defaults; the other sub-records keep what they hold. 8 gives
/// kind 7. 1 for the known kinds; 0 for any other, the record untouched.
FOM_API int QELDLGSetDefaultCGEFill(CGE_FILL* fill, CgeFillType kind);

/// `from` is the fill that is replaced, and gives its colours; it may be null.
FOM_API void FILLSetDefaultCGEUniform(CGE_UNIFORMFILL* uniform, const WFillHandle* from);
FOM_API void FILLSetDefaultCGEFountain(CGE_FOUNTAINFILL* fountain, const WFillHandle* from);
FOM_API void FILLSetDefaultCGEHatch(CGE_HATCHFILL* hatch);
FOM_API void FILLSetDefaultCGEHatchLine(CGE_HATCHLINE* line);
FOM_API void FILLSetDefaultCGEMonoBitmap(CGE_MONOBMPFILL* mono);
/// With `withBitmap` the first pattern of the host's two-colour patterns, else no bitmap.
FOM_API void FILLSetDefaultCGEMonoBitmapEx(CGE_MONOBMPFILL* mono, int withBitmap);
/// The same for the mono bitmap sub-record of `fill`; the kind stays.
FOM_API void FILLInternalSetDefaultCGEMonoBitmap(CGE_FILL* fill, int withBitmap);
FOM_API void FILLSetDefaultCGEColorBitmap(CGE_COLORBMPFILL* bitmap);
FOM_API void FILLSetDefaultCGEVector(CGE_VECTORFILL* vector);
/// Clears the header, default tile size, bounding boxes (0, 500000, 500000, 0).
FOM_API void FILLInitCGEVector(CGE_VECTORFILL* vector);
/// As FILLInitCGEVector, then a tile of 100 by 100 per cent of the object.
FOM_API void FILLSetDefaultTextureVectorInfo(CGE_VECTORFILL* vector);
/// A block whose bytes (its owner word too) are not cleared, a tile of half an inch, bounding boxes (0, 0, 1,
/// 1).
FOM_API void RCF_SetDefaultCGEVector(CGE_VECTORFILL* vector);
FOM_API void FILLSetDefaultCGETexture(CGE_TEXTUREFILL* texture);
/// Sets the pattern number to 0; the other fields stay.
FOM_API void FILLGetDefaultPSFill(CGE_PSFILL* postScript);
/// RGB black when `rgb` is not 0, else CMYK black; the default screen.
FOM_API void FILLGetDefaultUniformFill(CGE_UNIFORMFILL* uniform, int rgb);
FOM_API void FILLGetDefaultScreenSpec(CLR_SCREENSPEC* screen);

/// The colours that a new fill takes from the one that it replaces. A uniform fill gives its colour for both,
/// a fountain its first and last stop, a mono bitmap foreground and background, a hatch its background for
/// both. All else, a colour without a model and null give CMYK black to start and CMYK white to end.
FOM_API CLR_COLORSPEC FILLGetDefaultStartColorFromFill(const WFillHandle* from);
FOM_API CLR_COLORSPEC FILLGetDefaultEndColorFromFill(const WFillHandle* from);
