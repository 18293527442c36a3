#include <algorithm>

#include "host/base/atomic_file.h"
#include "host/base/temp_data.h"

#include "fom/fill_record.h"

void FILLCopyColorBitmapInfo(CGE_COLORBMPFILL* dst, const CGE_COLORBMPFILL* src) {
    *dst = *src;
}

void FILLCopyVectorInfo(CGE_VECTORFILL* dst, const CGE_VECTORFILL* src) {
    *dst = *src;
}

void FILLCopyTextureInfo(CGE_TEXTUREFILL* dst, const CGE_TEXTUREFILL* src) {
    *dst = *src;
}

void FILLCopyCGEHatch(CGE_HATCHFILL* dst, const CGE_HATCHFILL* src) {
    if (dst != src) *dst = *src;
}

void FILLCopyVectorData(HMEM* dst, HMEM src) noexcept {
    *dst = MEMMANDuplicate(src);
}

void FILLDeleteVectorData(HMEM* block) noexcept {
    MEMMANFree(*block);
    *block = nullptr;
}

void RCF_DeleteVectorData(HMEM* block) noexcept {
    FILLDeleteVectorData(block);
}

void FILLDeleteVectorInfo(CGE_VECTORFILL* fill) noexcept {
    fill->FreeMemory();
}

void FILLDeleteTextureInfo(CGE_TEXTUREFILL* fill) noexcept {
    fill->FreeMemory();
}

void FILLCopyHatchFillAttributes(CGE_HATCHFILL* dst, const CGE_HATCHFILL* src) {
    dst->background = src->background;
    dst->screen = src->screen;
    dst->modification = src->modification;
    dst->spacingMultiplier = src->spacingMultiplier;
    dst->thicknessMultiplier = src->thicknessMultiplier;
    const std::size_t common = std::min(dst->lines.size(), src->lines.size());
    for (std::size_t i = 0; i < common; ++i)
        dst->lines[i].pen = src->lines[i].pen;
}

void FILLSetHatchFillModified(CGE_HATCHFILL* hatch, bool modified) noexcept {
    hatch->modification &= ~std::uint32_t{kHatchModified};
    if (modified) hatch->modification |= kHatchModified;
}

void FILLSetVectorFillFileName(CGE_VECTORFILL* fill, const wchar_t* path) {
    unsigned id = 0;
    if (path && *path != L'\0') {
        host::Error error;
        const auto bytes = host::ReadWholeFile(host::ToPath(path), error);
        if (bytes) id = TMPCreateTmpFile(*bytes);
    }
    fill->AdoptTmpFile(id);
}

void RCF_SetVectorFillInstance(CGE_VECTORFILL* fill, void* instance) noexcept {
    fill->instance = instance;
}
