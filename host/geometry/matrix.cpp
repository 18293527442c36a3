#include "host/geometry/matrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

struct SinCos {
    double sin = 0, cos = 1;
};

/// Exact at multiples of a right angle, for any finite angle.
SinCos SinCosDegrees(double degrees) noexcept {
    int quarters = 0;
    const double rest = std::remquo(degrees, 90.0, &quarters) / kDegreesPerRadian;
    const double s = std::sin(rest);
    const double c = std::cos(rest);
    switch (static_cast<unsigned>(quarters) & 3u) {
        case 0:
            return {s, c};
        case 1:
            return {c, -s};
        case 2:
            return {-s, -c};
        default:
            return {-c, s};
    }
}

double TanDegrees(double degrees) noexcept {
    return std::tan(degrees / kDegreesPerRadian);
}

MATRIX Rotation(double degrees) noexcept {
    const SinCos r = SinCosDegrees(degrees);
    return {r.cos, r.sin, -r.sin, r.cos, 0, 0};
}

}  // namespace

MATRIX operator*(const MATRIX& first, const MATRIX& second) noexcept {
    return {first.a * second.a + first.c * second.b,
            first.b * second.a + first.d * second.b,
            first.a * second.c + first.c * second.d,
            first.b * second.c + first.d * second.d,
            first.a * second.tx + first.c * second.ty + first.tx,
            first.b * second.tx + first.d * second.ty + first.ty};
}

VECTOR2D TransformPoint(const MATRIX& m, VECTOR2D p) noexcept {
    return {m.a * p.x + m.c * p.y + m.tx, m.b * p.x + m.d * p.y + m.ty};
}

VECTOR2D TransformVector(const MATRIX& m, VECTOR2D v) noexcept {
    return {m.a * v.x + m.c * v.y, m.b * v.x + m.d * v.y};
}

double Determinant(const MATRIX& m) noexcept {
    return m.a * m.d - m.b * m.c;
}

// The linear part is brought to elements of at most 1 first: the determinant of a very small or very large
// matrix would leave the range of a double long before its inverse does.
std::optional<MATRIX> Inverse(const MATRIX& m) noexcept {
    if (!IsFinite(m)) return std::nullopt;
    const double scale = std::max({std::abs(m.a), std::abs(m.b), std::abs(m.c), std::abs(m.d)});
    if (scale == 0) return std::nullopt;
    const MATRIX unit{m.a / scale, m.b / scale, m.c / scale, m.d / scale, 0, 0};
    const double det = Determinant(unit);
    if (det == 0) return std::nullopt;
    MATRIX inverse{
        unit.d / det / scale, -unit.b / det / scale, -unit.c / det / scale, unit.a / det / scale, 0, 0};
    const VECTOR2D origin = TransformVector(inverse, {m.tx, m.ty});
    inverse.tx = -origin.x;
    inverse.ty = -origin.y;
    if (!IsFinite(inverse)) return std::nullopt;
    return inverse;
}

bool IsFinite(const MATRIX& m) noexcept {
    return std::isfinite(m.a) && std::isfinite(m.b) && std::isfinite(m.c) && std::isfinite(m.d) &&
           std::isfinite(m.tx) && std::isfinite(m.ty);
}

void UTLStretchMatrix(MATRIX& m, double sx, double sy) noexcept {
    m = MATRIX{sx * m.a, sy * m.b, sx * m.c, sy * m.d, sx * m.tx, sy * m.ty};
}

void UTLRotateMatrix(MATRIX& m, double microDegrees) noexcept {
    m = Rotation(microDegrees / 1e6) * m;
}

void UTLTranslateMatrix(MATRIX& m, double dx, double dy) noexcept {
    m.tx += dx;
    m.ty += dy;
}

namespace VyrMath {

// With rotate(angle) * skew * stretch = R * [sx, sy tan(skew); 0, sy], the first column of the matrix gives
// the angle and sx; the second one, turned back by the angle, is (sy tan(skew), sy).
Decomposition Decompose(const MATRIX& m) noexcept {
    Decomposition d;
    d.xOffset = m.tx;
    d.yOffset = m.ty;
    d.xScale = std::hypot(m.a, m.b);
    if (d.xScale == 0) {
        d.yScale = std::hypot(m.c, m.d);
        if (d.yScale != 0) d.angle = std::atan2(-m.c, m.d) * kDegreesPerRadian;
        return d;
    }
    d.angle = std::atan2(m.b, m.a) * kDegreesPerRadian;
    const double cos = m.a / d.xScale;
    const double sin = m.b / d.xScale;
    const double shear = cos * m.c + sin * m.d;
    d.yScale = cos * m.d - sin * m.c;
    if (d.yScale != 0) d.skew = std::atan(shear / d.yScale) * kDegreesPerRadian;
    return d;
}

MATRIX Compose(const Decomposition& d) noexcept {
    const MATRIX skewed{d.xScale, 0, d.yScale * TanDegrees(d.skew), d.yScale, 0, 0};
    MATRIX m = Rotation(d.angle) * skewed;
    m.tx = d.xOffset;
    m.ty = d.yOffset;
    return m;
}

}  // namespace VyrMath
