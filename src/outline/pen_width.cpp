#include "fom/pen_width.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <numbers>
#include <utility>

#include "fill/rounding.h"
#include "outline/find_wideline.h"

// The formulas stand in docs/pen_width.md.

namespace {

using VyrFOM::RoundTo;

constexpr double kRoundNibTolerance = 1e-9;
constexpr double kMaxLength = std::numeric_limits<std::int32_t>::max();
constexpr double kMicroDegreesPerRadian = 180e6 / std::numbers::pi;
constexpr std::int32_t kHalfTurn = 180000000;

struct Nib {
    std::int32_t width;
    std::int16_t stretch;
    std::int32_t angle;
};

struct FittedNib {
    double length;  ///< not rounded, within 32 bits
    std::int16_t stretch;
    std::int32_t angle;
};

struct PrincipalAxes {
    double longer, shorter;
    double shorterAngle;  ///< radians
};

/// The linear part of a matrix, as `unit` times a power of two. The elements of `unit` are below 2, so that
/// no square leaves the range of a double.
struct LinearMap {
    MATRIX unit;
    int exponent;
};

LinearMap TakeLinearPart(const MATRIX& m) noexcept {
    const double largest = std::max({std::abs(m.a), std::abs(m.b), std::abs(m.c), std::abs(m.d)});
    const int exponent = largest > 0 ? std::ilogb(largest) : 0;
    const auto down = [exponent](double element) { return std::scalbn(element, -exponent); };
    return {{down(m.a), down(m.b), down(m.c), down(m.d), 0, 0}, exponent};
}

double Dot(VECTOR2D a, VECTOR2D b) noexcept {
    return a.x * b.x + a.y * b.y;
}

double Length(VECTOR2D v) noexcept {
    return std::hypot(v.x, v.y);
}

/// Of the ellipse with the conjugate radii `a` and `b`. One that is round, or nearly so, has no axes to be
/// found: it keeps the ones it was given, lest noise decide.
PrincipalAxes FindPrincipalAxes(VECTOR2D a, VECTOR2D b) noexcept {
    const double twiceDot = 2 * Dot(a, b);
    const double difference = Dot({a.x - b.x, a.y - b.y}, {a.x + b.x, a.y + b.y});
    if (std::hypot(twiceDot, difference) <= kRoundNibTolerance * (Dot(a, a) + Dot(b, b)))
        return {Length(b), Length(a), std::atan2(a.y, a.x)};

    const double t = std::atan2(twiceDot, difference) / 2;
    const VECTOR2D longer{a.x * std::cos(t) + b.x * std::sin(t), a.y * std::cos(t) + b.y * std::sin(t)};
    const double length = Length(longer);
    // b cos t - a sin t would lose its direction to cancelling where the ellipse is flat.
    return {length, std::abs(a.x * b.y - a.y * b.x) / length, std::atan2(-longer.x, longer.y)};
}

std::int32_t NormalizeNibAngle(double radians) noexcept {
    const auto angle = RoundTo<std::int32_t>(radians * kMicroDegreesPerRadian);
    return (angle + 5 * kHalfTurn / 2) % kHalfTurn - kHalfTurn / 2;
}

std::int16_t StretchOf(const PrincipalAxes& axes) noexcept {
    const auto stretch = axes.longer > 0 ? RoundTo<std::int16_t>(axes.shorter * 100 / axes.longer) : 0;
    return static_cast<std::int16_t>(stretch != 0 ? stretch : 100);
}

FittedNib FitNib(const Nib& nib, const LinearMap& map) noexcept {
    MATRIX axes;
    UTLStretchMatrix(axes, static_cast<double>(nib.stretch) * nib.width / 100, nib.width);
    UTLRotateMatrix(axes, nib.angle);
    axes = map.unit * axes;
    const PrincipalAxes principal = FindPrincipalAxes({axes.a, axes.b}, {axes.c, axes.d});
    return {std::min(std::scalbn(principal.longer, map.exponent), kMaxLength), StretchOf(principal),
            NormalizeNibAngle(principal.shorterAngle)};
}

void FitThreads(CGE_OUTLINE& outline, const CGE_DES9_WIDELINE& wideline, const LinearMap& map) {
    const FittedNib thread = FitNib({wideline.threadWidth, outline.nibStretch, outline.nibAngle}, map);
    auto fitted = std::make_unique<CGE_DES9_WIDELINE>(wideline);
    fitted->threadWidth = RoundTo<std::int32_t>(thread.length);
    outline.SetWideline(std::move(fitted));
}

void ScaleVariableWidths(CGE_OUTLINE& outline, double factor) {
    if (outline.GetVariableAttribute().points.empty()) return;
    CGE_VARIABLEATTRIB scaled = outline.GetVariableAttribute();
    scaled.Scale(factor);
    outline.SetVariableAttribute(std::move(scaled));
}

// A copy is fitted, so that running out of memory half-way leaves the record as it was.
void FitPen(CGE_OUTLINE& outline, const MATRIX& m) {
    if (!IsFinite(m)) return;
    const LinearMap map = TakeLinearPart(m);
    CGE_OUTLINE fitted = outline;
    if (const auto* wideline = VyrFOM::FindWideline(outline)) FitThreads(fitted, *wideline, map);
    const FittedNib nib = FitNib({outline.width, outline.nibStretch, outline.nibAngle}, map);
    if (outline.width > 0) {
        fitted.dotLength = RoundTo<std::uint32_t>(fitted.dotLength * nib.length / outline.width);
        ScaleVariableWidths(fitted, nib.length / outline.width);
    }
    fitted.width = RoundTo<std::int32_t>(nib.length);
    fitted.nibStretch = nib.stretch;
    fitted.nibAngle = nib.angle;
    outline = std::move(fitted);
}

}  // namespace

void OUTPreAdjustPenWidth(CGE_OUTLINE& outline, const MATRIX* m) {
    if (m) FitPen(outline, *m);
}

void OUTPostAdjustPenWidth(CGE_OUTLINE& outline, const MATRIX* m) {
    if (m) FitPen(outline, *m);
}
