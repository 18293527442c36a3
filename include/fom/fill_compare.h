#pragma once

#include <optional>

#include "host/base/delegate.h"
#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/gfx/fill.h"

/// Exact three-way comparison of fills and their parts: 0 equal, negative when the first is less, positive
/// when it is greater. Most fields are compared as bytes, so the order is stable but not numeric. Pure;
/// records that nobody changes may be compared on several threads at once.

/// By kind, then by the sub-record of the kind. With `skipColorBytes` the identity block of a uniform fill's
/// colour does not take part. Vector contents are read in pieces of 16,384 bytes; when the two buffers for
/// that cannot be had, contents count as equal. Kinds 3, 4, 5 and above 12 have no content: same kind is
/// equal.
FOM_API int RCF_CompareCGEFills(const CGE_FILL* a, const CGE_FILL* b, bool skipColorBytes);
/// By kind, then by `decide` where it is set and answers, else as two pooled entries of these fills would
/// compare. Copies of one vector fill have temporary data of their own, so they differ here though their
/// bytes agree.
FOM_API int RCF_CompareCGEFills(const CGE_FILL& a, const CGE_FILL& b,
                                safe_function<std::optional<int>(const CGE_FILL&, const CGE_FILL&)> decide);

FOM_API int RCF_CompareTiles(const CGE_TILING* a, const CGE_TILING* b) noexcept;
/// Without the overprint words first; then the difference of the overprint words, wrapped to 32 bits.
FOM_API int RCF_CompareScreenSpec(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept;
FOM_API int RCF_CompareScreenSpecNoOverprint(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept;
/// The same function as RCF_CompareScreenSpecNoOverprint, whatever its name promises.
FOM_API int RCF_CompareScreenSpecOverprint(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept;
/// An absent texture is less than a present one; names are compared without regard to case.
FOM_API int RCF_CompareTextureInfo(const CGE_TXRINFO* a, const CGE_TXRINFO* b) noexcept;
/// The bytes of two blocks; the smaller block is less. No block is less than an empty one.
FOM_API int RCF_CompareBitmaps(HMEM a, HMEM b) noexcept;
FOM_API int FILLCompareHatchFills(const CGE_HATCHFILL* a, const CGE_HATCHFILL* b) noexcept;
FOM_API int FILLCompareHatchLine(const CGE_HATCHLINE* a, const CGE_HATCHLINE* b) noexcept;
/// Colours that both have a model by CompareColors, otherwise by the difference of the model numbers.
FOM_API int FILLCompareHatchColors(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) noexcept;

// RCF_CompareRImage is declared with the images, in host/gfx/image.h.
