#include "color/cie.h"

#include <cmath>

namespace host::detail {
namespace {

// Linear sRGB to XYZ. White is its row sums rather than a rounded constant: neutral colours then stay
// neutral.
constexpr Matrix3 kXyzFromLinear = {{{0.4124564, 0.3575761, 0.1804375},
                                     {0.2126729, 0.7151522, 0.0721750},
                                     {0.0193339, 0.1191920, 0.9503041}}};
constexpr Matrix3 kLinearFromXyz = Invert(kXyzFromLinear);
constexpr Vector3 kWhiteD65 = Multiply(kXyzFromLinear, Vector3{1, 1, 1});
constexpr Vector3 kWhiteD50 = {0.9642, 1.0, 0.8249};

constexpr Matrix3 kBradford = {
    {{0.8951, 0.2664, -0.1614}, {-0.7502, 1.7135, 0.0367}, {0.0389, -0.0685, 1.0296}}};

constexpr Matrix3 MakeAdaptation() noexcept {
    const Vector3 from = Multiply(kBradford, kWhiteD65);
    const Vector3 to = Multiply(kBradford, kWhiteD50);
    const Matrix3 scale = {{{to[0] / from[0], 0, 0}, {0, to[1] / from[1], 0}, {0, 0, to[2] / from[2]}}};
    return Multiply(Invert(kBradford), Multiply(scale, kBradford));
}
constexpr Matrix3 kD50FromD65 = MakeAdaptation();
constexpr Matrix3 kD65FromD50 = Invert(kD50FromD65);

double Encoded(double linear) noexcept {
    const double size = std::fabs(linear);
    const double out = size <= 0.0031308 ? 12.92 * size : 1.055 * std::pow(size, 1 / 2.4) - 0.055;
    return std::copysign(out, linear);
}

double Linear(double encoded) noexcept {
    const double size = std::fabs(encoded);
    const double out = size <= 0.04045 ? size / 12.92 : std::pow((size + 0.055) / 1.055, 2.4);
    return std::copysign(out, encoded);
}

constexpr double kDelta = 6.0 / 29;

double LabCurve(double t) noexcept {
    return t > kDelta * kDelta * kDelta ? std::cbrt(t) : t / (3 * kDelta * kDelta) + 4.0 / 29;
}
double LabCurveInverse(double t) noexcept {
    return t > kDelta ? t * t * t : 3 * kDelta * kDelta * (t - 4.0 / 29);
}

Vector3 LabRelativeTo(const Vector3& white, const Vector3& xyz) noexcept {
    const double x = LabCurve(xyz[0] / white[0]);
    const double y = LabCurve(xyz[1] / white[1]);
    const double z = LabCurve(xyz[2] / white[2]);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

Vector3 XyzRelativeTo(const Vector3& white, const Vector3& lab) noexcept {
    const double y = (lab[0] + 16) / 116;
    return {white[0] * LabCurveInverse(y + lab[1] / 500), white[1] * LabCurveInverse(y),
            white[2] * LabCurveInverse(y - lab[2] / 200)};
}

}  // namespace

Vector3 RgbFromXyz(const Vector3& xyz) noexcept {
    const Vector3 linear = Multiply(kLinearFromXyz, xyz);
    return {Encoded(linear[0]), Encoded(linear[1]), Encoded(linear[2])};
}

Vector3 XyzFromRgb(const Vector3& rgb) noexcept {
    return Multiply(kXyzFromLinear, Vector3{Linear(rgb[0]), Linear(rgb[1]), Linear(rgb[2])});
}

Vector3 LabFromXyz(const Vector3& xyz) noexcept {
    return LabRelativeTo(kWhiteD65, xyz);
}
Vector3 XyzFromLab(const Vector3& lab) noexcept {
    return XyzRelativeTo(kWhiteD65, lab);
}

Vector3 LabD50FromXyz(const Vector3& xyz) noexcept {
    return LabRelativeTo(kWhiteD50, Multiply(kD50FromD65, xyz));
}
Vector3 XyzFromLabD50(const Vector3& lab) noexcept {
    return Multiply(kD65FromD50, XyzRelativeTo(kWhiteD50, lab));
}

const Vector3& WhiteXyz() noexcept {
    return kWhiteD65;
}

}  // namespace host::detail
