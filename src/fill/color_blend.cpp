#include "fill/color_blend.h"

#include <cstdint>

#include "host/color/convert.h"

#include "fill/between.h"

namespace VyrFOM {
namespace {

std::uint16_t BlendHue(int a, int b, double factor) noexcept {
    const int turn = ((b - a) % 360 + 540) % 360 - 180;
    return static_cast<std::uint16_t>((RoundBetween(a, a + turn, factor) + 360) % 360);
}

std::uint16_t BlendSigned(std::uint16_t a, std::uint16_t b, double factor) noexcept {
    const int blended = RoundBetween(static_cast<std::int16_t>(a), static_cast<std::int16_t>(b), factor);
    return static_cast<std::uint16_t>(blended);
}

std::uint16_t BlendBytes(std::uint16_t a, std::uint16_t b, double factor) noexcept {
    const int low = RoundBetween(a & 0xFF, b & 0xFF, factor);
    const int high = RoundBetween(a >> 8, b >> 8, factor);
    return static_cast<std::uint16_t>(low | (high << 8));
}

std::uint16_t BlendComponent(ClrModel model, unsigned i, std::uint16_t a, std::uint16_t b,
                             double factor) noexcept {
    const bool isHue = i == 0 && (model == ClrModel::HSB || model == ClrModel::HLS);
    if (isHue) return BlendHue(a, b, factor);
    if (model == ClrModel::LAB && i != 0) return BlendSigned(a, b, factor);
    if (model == ClrModel::Hexachrome && i < 3) return BlendBytes(a, b, factor);
    return static_cast<std::uint16_t>(RoundBetween(a, b, factor));
}

/// The same ink, apart from how densely it is printed.
bool IsSameInk(const CLR_COLORSPEC& a, CLR_COLORSPEC b) noexcept {
    if (a.GetModel() != b.GetModel()) return false;
    b.SetInkDensity(a.GetInkDensity());
    b.SetDensity(a.GetDensity());
    return a == b;
}

CLR_COLORSPEC BlendDensities(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b, double factor) noexcept {
    CLR_COLORSPEC blended = a;
    blended.SetInkDensity(RoundBetween(a.GetInkDensity(), b.GetInkDensity(), factor));
    blended.SetDensity(RoundBetween(a.GetDensity(), b.GetDensity(), factor));
    return blended;
}

}  // namespace

bool BlendColor(const ColorContext& context, CLR_COLORSPEC& out, const CLR_COLORSPEC& a,
                const CLR_COLORSPEC& b, double factor) {
    if (IsSameInk(a, b)) {
        out = BlendDensities(a, b, factor);
        return true;
    }
    const ClrModel model = a.GetModel();
    CLR_COLORSPEC blended, other;
    if (!WClrConvert::IsProcessModel(model) || !WClrConvert::ConvertColorSpec(context, blended, model, a) ||
        !WClrConvert::ConvertColorSpec(context, other, model, b))
        return false;
    for (unsigned i = 0; i < 4; ++i)
        blended.SetComponent(
            i, BlendComponent(model, i, blended.GetComponent(i), other.GetComponent(i), factor));
    blended.SetInkDensity(RoundBetween(blended.GetInkDensity(), other.GetInkDensity(), factor));
    blended.SetPaletteType(0);
    blended.SetIdentity({});
    out = blended;
    return true;
}

}  // namespace VyrFOM
