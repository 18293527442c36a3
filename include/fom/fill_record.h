#pragma once

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/gfx/fill.h"

class WRefCountFill;

/// Creating, copying and freeing fill records. A null record pointer is accepted only where it is said.
/// One record is used by one thread at a time.

/// A new record of `kind` without defaults, freed with RCF_DeleteFill. Null when memory runs out.
FOM_API CGE_FILL* RCF_CreateFill(CgeFillType kind) noexcept;
/// Frees `old` (null allowed), then does what RCF_CreateFill does. Null when memory runs out; `old` is gone
/// then too.
FOM_API CGE_FILL* RCF_ReallocateFillMemory(CGE_FILL* old, CgeFillType kind) noexcept;
/// Frees what the record owns; its other fields stay.
FOM_API void RCF_ReleaseFillResources(CGE_FILL* fill) noexcept;
/// Frees what the record owns and empties it: kind 0.
FOM_API void RCF_ClearFill(CGE_FILL* fill) noexcept;
/// Null is accepted.
FOM_API void RCF_DeleteFill(CGE_FILL* fill) noexcept;

/// Makes `dst` a deep copy of `src`. For kinds 9, 10 and 11 the copy's pattern-data block names `owner`.
/// `dst` and `src` may be the same record. Throws bad_alloc, leaving `dst` as it was.
FOM_API void RCF_CopyFill(CGE_FILL* dst, const CGE_FILL* src, const WRefCountFill* owner);
/// Only when `src` is a hatch: makes `dst` a deep copy of it.
FOM_API void RCF_CopyHatchFillData(CGE_FILL* dst, const CGE_FILL* src);
/// Empties `dst` and copies the kind and the sub-record of that kind. Nothing when either is null or both are
/// the same record; an unknown kind copies the kind alone.
FOM_API void UFMCopyCGEFill(CGE_FILL* dst, const CGE_FILL* src);
/// Only when both are hatches: copies the hatch attributes (see FILLCopyHatchFillAttributes).
FOM_API void FILLCopyFillAttributes(CGE_FILL* dst, CGE_FILL* src);
/// Copies how a hatch looks apart from its lines' geometry: background, screen, modification word,
/// multipliers and, line by line as far as both have lines, the pen.
FOM_API void FILLCopyHatchFillAttributes(CGE_HATCHFILL* dst, const CGE_HATCHFILL* src);
/// Sets or clears the bit of the modification word that says that the hatch differs from its library entry.
FOM_API void FILLSetHatchFillModified(CGE_HATCHFILL* hatch, bool modified) noexcept;

/// Deep copies of one sub-record; what the destination owned is freed. The same sub-record twice is left
/// alone.
FOM_API void FILLCopyColorBitmapInfo(CGE_COLORBMPFILL* dst, const CGE_COLORBMPFILL* src);
FOM_API void FILLCopyVectorInfo(CGE_VECTORFILL* dst, const CGE_VECTORFILL* src);
FOM_API void FILLCopyTextureInfo(CGE_TEXTUREFILL* dst, const CGE_TEXTUREFILL* src);
FOM_API void FILLCopyCGEHatch(CGE_HATCHFILL* dst, const CGE_HATCHFILL* src);
/// A new block with the same 584 bytes; null for a null source or when memory runs out. What `*dst` held is
/// not freed.
FOM_API void FILLCopyVectorData(HMEM* dst, HMEM src) noexcept;
/// Frees the block and sets the handle to null.
FOM_API void FILLDeleteVectorData(HMEM* block) noexcept;
FOM_API void RCF_DeleteVectorData(HMEM* block) noexcept;
/// Frees the block and the temporary data.
FOM_API void FILLDeleteVectorInfo(CGE_VECTORFILL* fill) noexcept;
FOM_API void FILLDeleteTextureInfo(CGE_TEXTUREFILL* fill) noexcept;

/// The tiling of kinds 7 to 11 in `*tiling`; null, and false, for any other kind.
FOM_API bool FILLD_GetTiling(const CGE_FILL* fill, const CGE_TILING** tiling) noexcept;
/// Copies a whole tiling into the same place. False, and nothing done, for any other kind.
FOM_API bool FILLD_SetTiling(CGE_FILL* fill, const CGE_TILING* tiling);

/// The fill's temporary data becomes the bytes of the named file; none when it is null, empty or cannot be
/// read.
FOM_API void FILLSetVectorFillFileName(CGE_VECTORFILL* fill, const wchar_t* path);
/// `instance` is the host's and not owned.
FOM_API void RCF_SetVectorFillInstance(CGE_VECTORFILL* fill, void* instance) noexcept;

/// Whether a pattern fill has its pattern. Non-zero for kinds 7 and 8 with a bitmap, 9 with an image that can
/// be fetched, 10 with temporary data; 0 for every other kind, uniform and fountain included.
FOM_API int IsFillValid(const CGE_FILL* fill) noexcept;
