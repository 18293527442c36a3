#include "fom/fill_blend.h"

#include <cmath>
#include <utility>

#include "host/engines/texture_parameters.h"

#include "fill/between.h"
#include "fill/fountain_stops.h"

namespace {

using VyrFOM::Between;
using VyrFOM::RoundBetween;

RECT Between(const RECT& a, const RECT& b, double factor) noexcept {
    return {RoundBetween(a.left, b.left, factor), RoundBetween(a.top, b.top, factor),
            RoundBetween(a.right, b.right, factor), RoundBetween(a.bottom, b.bottom, factor)};
}

/// `out` is a copy of the nearer end.
void BlendNumbers(CGE_FOUNTAINFILL& out, const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b,
                  double f) noexcept {
    out.SetAngle(RoundBetween(a.GetAngle(), b.GetAngle(), f));
    out.SetCenterOffset(RoundBetween(a.GetCenterOffsetX(), b.GetCenterOffsetX(), f),
                        RoundBetween(a.GetCenterOffsetY(), b.GetCenterOffsetY(), f));
    out.SetNumSteps(RoundBetween(a.GetNumSteps(), b.GetNumSteps(), f));
    out.SetPadding(RoundBetween(a.GetPadding(), b.GetPadding(), f));
    out.SetBlendRateValue(RoundBetween(a.GetBlendRateValue(), b.GetBlendRateValue(), f));
    out.SetBlendRateAcceleration(Between(a.GetBlendRateAcceleration(), b.GetBlendRateAcceleration(), f));
    out.SetOrigin(
        {Between(a.GetOrigin().x, b.GetOrigin().x, f), Between(a.GetOrigin().y, b.GetOrigin().y, f)});
    out.SetMatrix(Between(a.GetMatrix(), b.GetMatrix(), f));
}

CGE_TILING BlendTiling(const CGE_TILING& a, const CGE_TILING& b, double f) noexcept {
    CGE_TILING tiling;
    tiling.width = RoundBetween(a.width, b.width, f);
    tiling.height = RoundBetween(a.height, b.height, f);
    tiling.xOffset = RoundBetween(a.xOffset, b.xOffset, f);
    tiling.yOffset = RoundBetween(a.yOffset, b.yOffset, f);
    tiling.interTileOffset = RoundBetween(a.interTileOffset, b.interTileOffset, f);
    tiling.flags = f < 0.5 ? a.flags : b.flags;
    return tiling;
}

host::TextureBlock BlendParameters(const host::TextureBlock& a, const host::TextureBlock& b,
                                   double f) noexcept {
    const auto from = host::DecodeTextureParameters(a);
    const auto to = host::DecodeTextureParameters(b);
    const host::TextureBlock& nearer = f < 0.5 ? a : b;
    if (a == b || !from || !to) return nearer;
    const auto color = [f](RIMAGE::Rgb x, RIMAGE::Rgb y) {
        return RIMAGE::Rgb{RoundBetween(x.r, y.r, f), RoundBetween(x.g, y.g, f), RoundBetween(x.b, y.b, f)};
    };
    host::TextureParameters blended;
    blended.seed = f < 0.5 ? from->seed : to->seed;  // names a pattern; those in between are unlike both
    blended.first = color(from->first, to->first);
    blended.second = color(from->second, to->second);
    blended.scale = RoundBetween(from->scale, to->scale, f);
    blended.detail = RoundBetween(from->detail, to->detail, f);
    blended.contrast = RoundBetween(from->contrast, to->contrast, f);
    return host::EncodeTextureParameters(blended);
}

bool IsSameTexture(const CGE_TXRINFO& a, const CGE_TXRINFO& b) noexcept {
    return a.present != 0 && b.present != 0 &&
           host::CompareFolded(a.library.Units(), b.library.Units()) == 0 &&
           host::CompareFolded(a.texture.Units(), b.texture.Units()) == 0;
}

/// What the picture is rendered from.
bool LooksLike(const CGE_TXRINFO& a, const CGE_TXRINFO& b) noexcept {
    return a.resolution == b.resolution && a.maxEdge == b.maxEdge && a.parameters == b.parameters &&
           host::CompareFolded(a.style.Units(), b.style.Units()) == 0;
}

}  // namespace

bool BlendFountainFill(const ColorContext& context, CGE_FOUNTAINFILL& out, const CGE_FOUNTAINFILL& a,
                       const CGE_FOUNTAINFILL& b, double factor) {
    if (std::isnan(factor) || a.GetFountainType() != b.GetFountainType() ||
        a.GetSpreadMethod() != b.GetSpreadMethod() || a.GetUnits() != b.GetUnits())
        return false;
    CLR_FOUNTCOLOR_ARRAY stops;
    if (!VyrFOM::BlendStops(context, stops, a.GetColors(), b.GetColors(), std::fmin(std::fmax(factor, 0), 1)))
        return false;
    CGE_FOUNTAINFILL blended = factor < 0.5 ? a : b;
    if (factor > 0 && factor < 1) {
        BlendNumbers(blended, a, b, factor);
        blended.SetColors(std::move(stops));
    }
    out = std::move(blended);
    return true;
}

bool BlendTextureFill(CGE_TEXTUREFILL& out, const CGE_TEXTUREFILL& a, const CGE_TEXTUREFILL& b,
                      double factor) {
    if (std::isnan(factor) || !IsSameTexture(a.info, b.info)) return false;
    const CGE_TEXTUREFILL& nearer = factor < 0.5 ? a : b;
    CGE_TEXTUREFILL blended = nearer;
    if (factor > 0 && factor < 1) {
        blended.tiling = BlendTiling(a.tiling, b.tiling, factor);
        blended.boundingBox = Between(a.boundingBox, b.boundingBox, factor);
        blended.originalBoundingBox = Between(a.originalBoundingBox, b.originalBoundingBox, factor);
        blended.info.resolution = RoundBetween(a.info.resolution, b.info.resolution, factor);
        blended.info.maxEdge = RoundBetween(a.info.maxEdge, b.info.maxEdge, factor);
        blended.info.parameters = BlendParameters(a.info.parameters, b.info.parameters, factor);
        if (!LooksLike(blended.info, nearer.info)) blended.AdoptTmpFile(0);
    }
    out = blended;
    return true;
}
