#include "svg/arc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace svg {

Point CenteredArc::At(double angle) const {
    const double x = radii.x * std::cos(angle);
    const double y = radii.y * std::sin(angle);
    return {center.x + x * std::cos(rotation) - y * std::sin(rotation),
            center.y + x * std::sin(rotation) + y * std::cos(rotation)};
}

Point CenteredArc::SlopeAt(double angle) const {
    const double x = -radii.x * std::sin(angle);
    const double y = radii.y * std::cos(angle);
    return {x * std::cos(rotation) - y * std::sin(rotation), x * std::sin(rotation) + y * std::cos(rotation)};
}

bool CenteredArc::Covers(double angle) const {
    constexpr double kTurn = 2 * std::numbers::pi;
    double from = std::fmod(extent >= 0 ? angle - start : start - angle, kTurn);
    if (from < 0) from += kTurn;
    return from <= std::abs(extent);
}

CenteredArc FindCenter(Point from, Point radii, double rotation, bool large, bool sweep, Point to) {
    const double sine = std::sin(rotation);
    const double cosine = std::cos(rotation);
    const Point half{(from.x - to.x) / 2, (from.y - to.y) / 2};
    const Point turned{cosine * half.x + sine * half.y, cosine * half.y - sine * half.x};
    double rx = std::abs(radii.x);
    double ry = std::abs(radii.y);
    const double excess = turned.x * turned.x / (rx * rx) + turned.y * turned.y / (ry * ry);
    if (excess > 1) {
        rx *= std::sqrt(excess);
        ry *= std::sqrt(excess);
    }
    const double spread = rx * rx * turned.y * turned.y + ry * ry * turned.x * turned.x;
    const double factor =
        std::sqrt(std::max(0.0, rx * rx * ry * ry / spread - 1)) * (large == sweep ? -1 : 1);
    const Point offset{factor * rx * turned.y / ry, -factor * ry * turned.x / rx};
    const Point center{cosine * offset.x - sine * offset.y + (from.x + to.x) / 2,
                       sine * offset.x + cosine * offset.y + (from.y + to.y) / 2};
    const double start = std::atan2((turned.y - offset.y) / ry, (turned.x - offset.x) / rx);
    double extent = std::atan2((-turned.y - offset.y) / ry, (-turned.x - offset.x) / rx) - start;
    if (sweep && extent < 0) extent += 2 * std::numbers::pi;
    if (!sweep && extent > 0) extent -= 2 * std::numbers::pi;
    return {center, {rx, ry}, rotation, start, extent};
}

}  // namespace svg
