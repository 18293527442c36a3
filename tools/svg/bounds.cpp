#include "svg/bounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "svg/arc.h"

namespace svg {
namespace {

double Quadratic(double p0, double p1, double p2, double t) {
    const double s = 1 - t;
    return s * s * p0 + 2 * s * t * p1 + t * t * p2;
}

double Cubic(double p0, double p1, double p2, double p3, double t) {
    const double s = 1 - t;
    return s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3;
}

/// Where the derivative of a cubic along one axis is zero.
std::array<double, 2> CubicExtrema(double p0, double p1, double p2, double p3) {
    const double a = p3 - 3 * p2 + 3 * p1 - p0;
    const double b = p2 - 2 * p1 + p0;
    const double c = p1 - p0;
    const double root = b * b - a * c;
    if (root < 0) return {-1, -1};
    // The form that does not cancel; it also covers a == 0.
    const double q = -(b + std::copysign(std::sqrt(root), b));
    return {a == 0 ? -1 : q / a, q == 0 ? -1 : c / q};
}

bool IsInside(double t) {
    return t > 0 && t < 1;
}

}  // namespace

void Bounds::Add(Point p) {
    m_finite = m_finite && std::isfinite(p.x) && std::isfinite(p.y);
    if (m_empty) {
        m_rect = {p.x, p.y, p.x, p.y};
        m_empty = false;
        return;
    }
    m_rect.left = std::min(m_rect.left, p.x);
    m_rect.top = std::min(m_rect.top, p.y);
    m_rect.right = std::max(m_rect.right, p.x);
    m_rect.bottom = std::max(m_rect.bottom, p.y);
}

void Bounds::AddQuadratic(Point from, Point control, Point to) {
    Add(to);
    const auto at = [](double p0, double p1, double p2) { return (p0 - p1) / (p0 - 2 * p1 + p2); };
    for (const double t : {at(from.x, control.x, to.x), at(from.y, control.y, to.y)}) {
        if (IsInside(t)) Add({Quadratic(from.x, control.x, to.x, t), Quadratic(from.y, control.y, to.y, t)});
    }
}

void Bounds::AddCubic(Point from, Point control1, Point control2, Point to) {
    Add(to);
    const auto xs = CubicExtrema(from.x, control1.x, control2.x, to.x);
    const auto ys = CubicExtrema(from.y, control1.y, control2.y, to.y);
    for (const double t : {xs[0], xs[1], ys[0], ys[1]}) {
        if (!IsInside(t)) continue;
        Add({Cubic(from.x, control1.x, control2.x, to.x, t), Cubic(from.y, control1.y, control2.y, to.y, t)});
    }
}

void Bounds::AddArc(Point from, Point radii, double rotation, bool large, bool sweep, Point to) {
    Add(to);
    const bool straight = radii.x == 0 || radii.y == 0 || (from.x == to.x && from.y == to.y);
    if (straight) return;
    const double turn = std::fmod(rotation, 360) * std::numbers::pi / 180;
    const CenteredArc arc = FindCenter(from, radii, turn, large, sweep, to);
    const double x = std::atan2(-arc.radii.y * std::sin(turn), arc.radii.x * std::cos(turn));
    const double y = std::atan2(arc.radii.y * std::cos(turn), arc.radii.x * std::sin(turn));
    for (const double angle : {x, x + std::numbers::pi, y, y + std::numbers::pi}) {
        if (arc.Covers(angle)) Add(arc.At(angle));
    }
}

std::optional<Rect> Bounds::Result() const {
    if (m_empty || !m_finite) return std::nullopt;
    return m_rect;
}

}  // namespace svg
