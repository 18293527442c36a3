#include "color/formulas.h"

#include <algorithm>
#include <cmath>

namespace host::detail {
namespace {

/// A quarter of an 8-bit step. Less colour than that is the rounding of some other model, which saturation
/// near black and white would blow up to a full one.
constexpr double kLeastChroma = 1.0 / 1024;

struct Extent {
    double min;
    double max;
    double chroma;
};

Extent ExtentOf(const Vector3& rgb) noexcept {
    const auto [min, max] = std::minmax({rgb[0], rgb[1], rgb[2]});
    const double chroma = max - min;
    return {min, max, chroma < kLeastChroma ? 0 : chroma};
}

double HueOf(const Vector3& rgb, const Extent& extent) noexcept {
    const auto [r, g, b] = rgb;
    const double chroma = extent.chroma;
    if (chroma == 0) return 0;
    double sector = 0;
    if (extent.max == r) {
        sector = (g - b) / chroma;
    } else if (extent.max == g) {
        sector = 2 + (b - r) / chroma;
    } else {
        sector = 4 + (r - g) / chroma;
    }
    return 60 * (sector < 0 ? sector + 6 : sector);
}

/// The colour of `hue` whose components span from `min` to `min + chroma`.
Vector3 FromHue(double hue, double min, double chroma) noexcept {
    const double sector = hue / 60;
    const double top = min + chroma;
    const double between = min + chroma * (1 - std::fabs(std::fmod(sector, 2) - 1));
    switch (static_cast<int>(sector)) {
        case 0:
            return {top, between, min};
        case 1:
            return {between, top, min};
        case 2:
            return {min, top, between};
        case 3:
            return {min, between, top};
        case 4:
            return {between, min, top};
        default:
            return {top, min, between};
    }
}

constexpr double kMaxI = 0.595716;
constexpr double kMaxQ = 0.522591;
constexpr Matrix3 kYiqFromRgb = {{{0.299, 0.587, 0.114},
                                  {0.595716 / kMaxI, -0.274453 / kMaxI, -0.321263 / kMaxI},
                                  {0.211456 / kMaxQ, -0.522591 / kMaxQ, 0.311135 / kMaxQ}}};
constexpr Matrix3 kRgbFromYiq = Invert(kYiqFromRgb);

}  // namespace

Vector3 Clipped(const Vector3& rgb) noexcept {
    return {std::clamp(rgb[0], 0.0, 1.0), std::clamp(rgb[1], 0.0, 1.0), std::clamp(rgb[2], 0.0, 1.0)};
}

Cmyk CmykFromRgb(const Vector3& rgb) noexcept {
    const double max = ExtentOf(rgb).max;
    if (max <= 0) return {0, 0, 0, 1};
    return {(max - rgb[0]) / max, (max - rgb[1]) / max, (max - rgb[2]) / max, 1 - max};
}

Vector3 RgbFromCmyk(const Cmyk& cmyk) noexcept {
    const double light = 1 - cmyk[3];
    return {(1 - cmyk[0]) * light, (1 - cmyk[1]) * light, (1 - cmyk[2]) * light};
}

double GrayFromRgb(const Vector3& rgb) noexcept {
    return 0.299 * rgb[0] + 0.587 * rgb[1] + 0.114 * rgb[2];
}

Vector3 HsbFromRgb(const Vector3& rgb) noexcept {
    const Extent extent = ExtentOf(rgb);
    const double saturation = extent.max > 0 ? extent.chroma / extent.max : 0;
    return {HueOf(rgb, extent), saturation, extent.max};
}

Vector3 RgbFromHsb(const Vector3& hsb) noexcept {
    const double chroma = hsb[1] * hsb[2];
    return FromHue(hsb[0], hsb[2] - chroma, chroma);
}

Vector3 HlsFromRgb(const Vector3& rgb) noexcept {
    const Extent extent = ExtentOf(rgb);
    const double lightness = (extent.max + extent.min) / 2;
    const double widest = 1 - std::fabs(2 * lightness - 1);
    const double saturation = extent.chroma > 0 ? extent.chroma / widest : 0;
    return {HueOf(rgb, extent), lightness, saturation};
}

Vector3 RgbFromHls(const Vector3& hls) noexcept {
    const double chroma = hls[2] * (1 - std::fabs(2 * hls[1] - 1));
    return FromHue(hls[0], hls[1] - chroma / 2, chroma);
}

Vector3 YiqFromRgb(const Vector3& rgb) noexcept {
    return Multiply(kYiqFromRgb, rgb);
}
Vector3 RgbFromYiq(const Vector3& yiq) noexcept {
    return Multiply(kRgbFromYiq, yiq);
}

Cmyk CmykFromHexachrome(const Oymcgk& inks) noexcept {
    const auto [orange, yellow, magenta, cyan, green, black] = inks;
    return {std::min(cyan + green, 1.0), std::min(magenta + orange / 2, 1.0),
            std::min(yellow + orange + green, 1.0), black};
}

Oymcgk HexachromeFromCmyk(const Cmyk& cmyk) noexcept {
    return {0, cmyk[2], cmyk[1], cmyk[0], 0, cmyk[3]};
}

}  // namespace host::detail
