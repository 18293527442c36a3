#include "fill/fill_compare.h"

#include "host/color/convert.h"

#include "fom/fill_compare.h"

#include "fill/byte_order.h"

using VyrFOM::CompareBytes;
using VyrFOM::CompareValues;

namespace {

int CompareUniform(const CGE_UNIFORMFILL& a, const CGE_UNIFORMFILL& b, bool skipColorBytes) noexcept {
    if (const int order = WClrConvert::CompareColors(a.color, b.color); order != 0) return order;
    // Equal colours are of one model: both spot or neither.
    if (const int order = CLR_SCREENSPEC::CompareTo(a.screen, b.screen, !a.color.IsSpot()); order != 0)
        return order;
    return skipColorBytes ? 0 : CompareBytes(a.color.GetIdentity(), b.color.GetIdentity());
}

int ComparePostScript(const CGE_PSFILL& a, const CGE_PSFILL& b) noexcept {
    if (const int order = CompareBytes(a.number, b.number); order != 0) return order;
    if (const int order = CompareBytes(a.reserved, b.reserved); order != 0) return order;
    return CompareBytes(a.parameters, b.parameters);
}

int CompareMono(const CGE_MONOBMPFILL& a, const CGE_MONOBMPFILL& b) noexcept {
    if (const int order = RCF_CompareBitmaps(a.bitmap, b.bitmap); order != 0) return order;
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = WClrConvert::CompareColors(a.foreground, b.foreground); order != 0) return order;
    if (const int order = WClrConvert::CompareColors(a.background, b.background); order != 0) return order;
    const bool withOverprint = !a.foreground.IsSpot() && !a.background.IsSpot();
    if (const int order = CLR_SCREENSPEC::CompareTo(a.screen, b.screen, withOverprint); order != 0)
        return order;
    return CompareValues(a.engineSwitch, b.engineSwitch);
}

int CompareColorBitmap(const CGE_COLORBMPFILL& a, const CGE_COLORBMPFILL& b) noexcept {
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    return VyrFOM::CompareTmpImages(a.tmpFile, b.tmpFile);
}

int CompareVector(const CGE_VECTORFILL& a, const CGE_VECTORFILL& b) {
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = CompareBytes(a.originalBoundingBox, b.originalBoundingBox); order != 0)
        return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    return VyrFOM::CompareTmpContents(a.tmpFile, b.tmpFile);
}

int CompareTexture(const CGE_TEXTUREFILL& a, const CGE_TEXTUREFILL& b) noexcept {
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    return RCF_CompareTextureInfo(&a.info, &b.info);
}

}  // namespace

int VyrFOM::CompareSameKind(const CGE_FILL& a, const CGE_FILL& b, bool skipColorBytes) {
    switch (a.GetType()) {
        case FillUniform:
            return CompareUniform(a.Uniform(), b.Uniform(), skipColorBytes);
        case FillFountain:
            return a.Fountain().CompareTo(b.Fountain());
        case FillPostScript:
            return ComparePostScript(a.PostScript(), b.PostScript());
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return CompareMono(a.MonoBitmap(), b.MonoBitmap());
        case FillColorBitmap:
            return CompareColorBitmap(a.ColorBitmap(), b.ColorBitmap());
        case FillVector:
            return CompareVector(a.Vector(), b.Vector());
        case FillTexture:
            return CompareTexture(a.Texture(), b.Texture());
        case FillHatch:
            return FILLCompareHatchFills(&a.Hatch(), &b.Hatch());
        default:
            return 0;
    }
}

int RCF_CompareCGEFills(const CGE_FILL* a, const CGE_FILL* b, bool skipColorBytes) {
    return VyrFOM::CompareFills(*a, *b, skipColorBytes);
}
