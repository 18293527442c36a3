#include <algorithm>

#include "color/cie.h"
#include "color/device.h"
#include "color/formulas.h"

namespace host::detail {
namespace {

Vector3 FirstThree(const std::array<double, 4>& v) noexcept {
    return {v[0], v[1], v[2]};
}

Vector3 ToRgb(const DeviceColor& color) noexcept {
    switch (color.family) {
        case Family::Cmyk:
            return RgbFromCmyk(color.v);
        case Family::Gray:
            return {color.v[0], color.v[0], color.v[0]};
        case Family::Xyz:
            return RgbFromXyz(FirstThree(color.v));
        case Family::Rgb:
            break;
    }
    return FirstThree(color.v);
}

int Scaled(double part, int full) noexcept {
    return Quantise(part * full, 0, full);
}
/// -1 to 1 around 128.
int Balanced(double part) noexcept {
    return 128 + Quantise(part * 127, -127, 127);
}
int Degrees(double hue) noexcept {
    return Quantise(hue, 0, 360) % 360;
}

CLR_COLORSPEC EncodeRgb(const Vector3& rgb, ClrModel model) noexcept {
    CLR_COLORSPEC out;
    switch (model) {
        case ClrModel::RGB48:
            out.MakeRGB48(Scaled(rgb[0], 65535), Scaled(rgb[1], 65535), Scaled(rgb[2], 65535), 100);
            break;
        case ClrModel::CMY:
            out.MakeCMY(Scaled(1 - rgb[0], 255), Scaled(1 - rgb[1], 255), Scaled(1 - rgb[2], 255));
            break;
        case ClrModel::HSB: {
            const Vector3 hsb = HsbFromRgb(rgb);
            out.MakeHSB(Degrees(hsb[0]), Scaled(hsb[1], 255), Scaled(hsb[2], 255));
            break;
        }
        case ClrModel::HLS: {
            const Vector3 hls = HlsFromRgb(rgb);
            out.MakeHLS(Degrees(hls[0]), Scaled(hls[1], 255), Scaled(hls[2], 255));
            break;
        }
        case ClrModel::YIQ255: {
            const Vector3 yiq = YiqFromRgb(rgb);
            out.MakeYIQ255(Scaled(yiq[0], 255), Balanced(yiq[1]), Balanced(yiq[2]));
            break;
        }
        default:
            out.MakeRGB(Scaled(rgb[0], 255), Scaled(rgb[1], 255), Scaled(rgb[2], 255));
    }
    return out;
}

CLR_COLORSPEC EncodeCmyk(const Cmyk& v, ClrModel model) noexcept {
    CLR_COLORSPEC out;
    if (model == ClrModel::CMYK) {
        out.MakeCMYK(Scaled(v[0], 100), Scaled(v[1], 100), Scaled(v[2], 100), Scaled(v[3], 100));
    } else if (model == ClrModel::CMYK255) {
        out.MakeCMYK255(Scaled(v[0], 255), Scaled(v[1], 255), Scaled(v[2], 255), Scaled(v[3], 255));
    } else {
        const Oymcgk inks = HexachromeFromCmyk(v);
        std::array<int, 6> percent{};
        for (unsigned i = 0; i < inks.size(); ++i)
            percent[i] = Scaled(inks[i], 100);
        out.MakeHexachrome(percent, 100);
    }
    return out;
}

CLR_COLORSPEC EncodeGray(double gray, ClrModel model) noexcept {
    CLR_COLORSPEC out;
    if (model == ClrModel::BlackAndWhite) {
        out.MakeBlackAndWhite(Scaled(gray, 1) != 0);
    } else if (model == ClrModel::Gray) {
        out.MakeGray(Scaled(gray, 255));
    } else {
        out.MakeGray24(Scaled(gray, 255));
    }
    return out;
}

CLR_COLORSPEC EncodeXyz(const Vector3& xyz, ClrModel model) noexcept {
    CLR_COLORSPEC out;
    if (model == ClrModel::XYZ) {
        out.MakeXYZ(Quantise(xyz[0] * 32768, 0, 65535), Quantise(xyz[1] * 32768, 0, 65535),
                    Quantise(xyz[2] * 32768, 0, 65535));
        return out;
    }
    const Vector3 lab = LabFromXyz(xyz);
    const int a = Quantise(lab[1], -128, 127);
    const int b = Quantise(lab[2], -128, 127);
    if (model == ClrModel::LAB) {
        out.MakeLAB(Quantise(lab[0], 0, 100), a, b);
    } else {
        out.MakeLAB255(Scaled(lab[0] / 100, 255), a + 128, b + 128);
    }
    return out;
}

}  // namespace

DeviceColor ToFamily(const DeviceColor& color, Family family) noexcept {
    if (color.family == family) return color;
    const Vector3 rgb = ToRgb(color);
    switch (family) {
        case Family::Cmyk:
            return {family, CmykFromRgb(Clipped(rgb))};
        case Family::Gray:
            return {family, {GrayFromRgb(Clipped(rgb)), 0, 0, 0}};
        case Family::Xyz: {
            const Vector3 xyz = XyzFromRgb(rgb);
            return {family, {xyz[0], xyz[1], xyz[2], 0}};
        }
        case Family::Rgb:
            break;
    }
    return {family, {rgb[0], rgb[1], rgb[2], 0}};
}

CLR_COLORSPEC Encode(const DeviceColor& color, ClrModel model) noexcept {
    switch (color.family) {
        case Family::Cmyk:
            return EncodeCmyk(color.v, model);
        case Family::Gray:
            return EncodeGray(color.v[0], model);
        case Family::Xyz:
            return EncodeXyz(FirstThree(color.v), model);
        case Family::Rgb:
            break;
    }
    return EncodeRgb(Clipped(FirstThree(color.v)), model);
}

}  // namespace host::detail
