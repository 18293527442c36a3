#include "fom/fill_record.h"

#include <new>
#include <utility>

#include "host/gfx/image.h"

namespace {

/// The sub-record that `src`'s kind names, nothing else.
void CopyKindSubRecord(CGE_FILL& dst, const CGE_FILL& src) {
    switch (src.GetType()) {
        case FillUniform:
            dst.EditUniform() = src.Uniform();
            break;
        case FillFountain:
            dst.EditFountain() = src.Fountain();
            break;
        case FillPostScript:
            dst.EditPostScript() = src.PostScript();
            break;
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            dst.EditMonoBitmap() = src.MonoBitmap();
            break;
        case FillColorBitmap:
            FILLCopyColorBitmapInfo(&dst.EditColorBitmap(), &src.ColorBitmap());
            break;
        case FillVector:
            FILLCopyVectorInfo(&dst.EditVector(), &src.Vector());
            break;
        case FillTexture:
            FILLCopyTextureInfo(&dst.EditTexture(), &src.Texture());
            break;
        case FillHatch:
            FILLCopyCGEHatch(&dst.EditHatch(), &src.Hatch());
            break;
        default:
            break;
    }
}

}  // namespace

CGE_FILL* RCF_CreateFill(CgeFillType kind) noexcept {
    return new (std::nothrow) CGE_FILL(kind);
}

CGE_FILL* RCF_ReallocateFillMemory(CGE_FILL* old, CgeFillType kind) noexcept {
    RCF_DeleteFill(old);
    return RCF_CreateFill(kind);
}

void RCF_ReleaseFillResources(CGE_FILL* fill) noexcept {
    fill->FreeMemoryAndClear();
}

void RCF_ClearFill(CGE_FILL* fill) noexcept {
    fill->FreeMemoryAndClear();
    fill->Clear();
}

void RCF_DeleteFill(CGE_FILL* fill) noexcept {
    delete fill;
}

void RCF_CopyFill(CGE_FILL* dst, const CGE_FILL* src, const WRefCountFill* owner) {
    *dst = *src;
    // A sub-record that has a block is allocated already, so that reaching it cannot fail any more.
    const CGE_PATTERNFILL* pattern = dst->Pattern();
    if (pattern && pattern->patternData) dst->EditPattern()->SetOwner(owner);
}

void RCF_CopyHatchFillData(CGE_FILL* dst, const CGE_FILL* src) {
    if (src->GetType() == FillHatch) *dst = *src;
}

void UFMCopyCGEFill(CGE_FILL* dst, const CGE_FILL* src) {
    if (!dst || !src || dst == src) return;
    CGE_FILL copy(src->GetType());
    CopyKindSubRecord(copy, *src);
    copy.SetGuid(dst->GetGuid());
    *dst = std::move(copy);
}

void FILLCopyFillAttributes(CGE_FILL* dst, CGE_FILL* src) {
    if (dst->GetType() == FillHatch && src->GetType() == FillHatch)
        FILLCopyHatchFillAttributes(&dst->EditHatch(), &src->Hatch());
}

bool FILLD_GetTiling(const CGE_FILL* fill, const CGE_TILING** tiling) noexcept {
    *tiling = fill->GetCGETiling();
    return *tiling != nullptr;
}

bool FILLD_SetTiling(CGE_FILL* fill, const CGE_TILING* tiling) {
    const CGE_TILING value = *tiling;
    CGE_TILING* place = fill->EditCGETiling();
    if (place) *place = value;
    return place != nullptr;
}

int IsFillValid(const CGE_FILL* fill) noexcept {
    switch (fill->GetType()) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return fill->MonoBitmap().bitmap != nullptr;
        case FillColorBitmap:
            return UDIIMGFromTmpFile(fill->ColorBitmap().tmpFile) != nullptr;
        case FillVector:
            return fill->Vector().tmpFile != 0;
        default:
            return 0;
    }
}
