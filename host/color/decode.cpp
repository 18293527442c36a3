#include <algorithm>

#include "color/cie.h"
#include "color/device.h"
#include "color/formulas.h"

namespace host::detail {
namespace {

/// Component `i` as a part of `full`, which it does not exceed.
double Part(const CLR_COLORSPEC& color, unsigned i, int full) noexcept {
    return static_cast<double>(std::min<int>(color.GetComponent(i), full)) / full;
}

Vector3 ThreeParts(const CLR_COLORSPEC& color, int full) noexcept {
    return {Part(color, 0, full), Part(color, 1, full), Part(color, 2, full)};
}

double Hue(const CLR_COLORSPEC& color) noexcept {
    return color.GetComponent(0) % 360;
}

/// Component `i` around 128 as -1 to 1.
double Balanced(const CLR_COLORSPEC& color, unsigned i) noexcept {
    return std::max((std::min<int>(color.GetComponent(i), 255) - 128) / 127.0, -1.0);
}

double SignedByte(const CLR_COLORSPEC& color, unsigned i) noexcept {
    const auto value = static_cast<std::int16_t>(color.GetComponent(i));
    return std::clamp<int>(value, -128, 127);
}

DeviceColor Three(Family family, const Vector3& v) noexcept {
    return {family, {v[0], v[1], v[2], 0}};
}
DeviceColor Rgb(const Vector3& v) noexcept {
    return Three(Family::Rgb, v);
}
DeviceColor FourInks(const CLR_COLORSPEC& color, int full) noexcept {
    return {Family::Cmyk,
            {Part(color, 0, full), Part(color, 1, full), Part(color, 2, full), Part(color, 3, full)}};
}

DeviceColor DecodeHexachrome(const CLR_COLORSPEC& color) noexcept {
    const std::array<std::uint8_t, 6> stored = color.GetHexachrome();
    Oymcgk inks{};
    for (unsigned i = 0; i < inks.size(); ++i)
        inks[i] = std::min<int>(stored[i], 100) / 100.0;
    return {Family::Cmyk, CmykFromHexachrome(inks)};
}

std::optional<DeviceColor> DecodeFull(const CLR_COLORSPEC& color) noexcept {
    switch (color.GetModel()) {
        case ClrModel::CMYK:
            return FourInks(color, 100);
        case ClrModel::CMYK255:
            return FourInks(color, 255);
        case ClrModel::Hexachrome:
            return DecodeHexachrome(color);
        case ClrModel::RGB:
        case ClrModel::UserInk:
            return Rgb(ThreeParts(color, 255));
        case ClrModel::RGB48:
            return Rgb(ThreeParts(color, 65535));
        case ClrModel::CMY:
            return Rgb({1 - Part(color, 0, 255), 1 - Part(color, 1, 255), 1 - Part(color, 2, 255)});
        case ClrModel::HSB:
            return Rgb(RgbFromHsb({Hue(color), Part(color, 1, 255), Part(color, 2, 255)}));
        case ClrModel::HLS:
            return Rgb(RgbFromHls({Hue(color), Part(color, 1, 255), Part(color, 2, 255)}));
        case ClrModel::YIQ255:
            return Rgb(Clipped(RgbFromYiq({Part(color, 0, 255), Balanced(color, 1), Balanced(color, 2)})));
        case ClrModel::BlackAndWhite:
            return DeviceColor{Family::Gray, {Part(color, 0, 1), 0, 0, 0}};
        case ClrModel::Gray:
        case ClrModel::Gray24:
            return DeviceColor{Family::Gray, {Part(color, 0, 255), 0, 0, 0}};
        case ClrModel::LAB:
            return Three(Family::Xyz,
                         XyzFromLab({Part(color, 0, 100) * 100, SignedByte(color, 1), SignedByte(color, 2)}));
        case ClrModel::LAB255:
            return Three(Family::Xyz, XyzFromLab({Part(color, 0, 255) * 100,
                                                  std::min<int>(color.GetComponent(1), 255) - 128.0,
                                                  std::min<int>(color.GetComponent(2), 255) - 128.0}));
        case ClrModel::XYZ:
            return Three(Family::Xyz, {color.GetComponent(0) / 32768.0, color.GetComponent(1) / 32768.0,
                                       color.GetComponent(2) / 32768.0});
        default:
            return std::nullopt;
    }
}

/// Mixes with the white of the family: less ink on paper.
void Thin(DeviceColor& color, double tint) noexcept {
    constexpr std::array<double, 4> kNoInk = {0, 0, 0, 0};
    constexpr std::array<double, 4> kLight = {1, 1, 1, 1};
    std::array<double, 4> white = color.family == Family::Cmyk ? kNoInk : kLight;
    if (color.family == Family::Xyz) std::copy(WhiteXyz().begin(), WhiteXyz().end(), white.begin());
    for (unsigned i = 0; i < 4; ++i)
        color.v[i] = white[i] - tint * (white[i] - color.v[i]);
}

}  // namespace

std::optional<Family> FamilyOf(ClrModel model) noexcept {
    switch (model) {
        case ClrModel::RGB:
        case ClrModel::RGB48:
        case ClrModel::CMY:
        case ClrModel::HSB:
        case ClrModel::HLS:
        case ClrModel::YIQ255:
            return Family::Rgb;
        case ClrModel::CMYK:
        case ClrModel::CMYK255:
        case ClrModel::Hexachrome:
            return Family::Cmyk;
        case ClrModel::BlackAndWhite:
        case ClrModel::Gray:
        case ClrModel::Gray24:
            return Family::Gray;
        case ClrModel::LAB:
        case ClrModel::LAB255:
        case ClrModel::XYZ:
            return Family::Xyz;
        default:
            return std::nullopt;
    }
}

double TintOf(const CLR_COLORSPEC& color) noexcept {
    const int ink = color.IsInk() ? std::min<int>(color.GetInkDensity(), 100) : 100;
    return ink * color.GetDensity() / 10000.0;
}

std::optional<DeviceColor> Decode(const CLR_COLORSPEC& color) noexcept {
    std::optional<DeviceColor> device = DecodeFull(color);
    if (device) {
        if (const double tint = TintOf(color); tint < 1) Thin(*device, tint);
    }
    return device;
}

}  // namespace host::detail
