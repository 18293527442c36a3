#include "svg/path_steps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "svg/arc.h"

namespace svg {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;
/// Keeps the noise of angles, which is large where radii have grown to fit, from adding a piece.
constexpr double kAngleNoise = 1e-6;

}  // namespace

void PathSteps::Append(const PathStep& step) {
    m_overflowed = m_overflowed || m_steps.size() >= m_most;
    if (!m_overflowed) m_steps.push_back(step);
}

void PathSteps::Start(Point p) {
    m_start = p;
    m_closed = false;
    Append({.kind = PathStep::Kind::Move, .control1{}, .control2{}, .to = p});
}

void PathSteps::Add(Point to) {
    if (m_closed) Start(m_start);
    Append({.kind = PathStep::Kind::Line, .control1{}, .control2{}, .to = to});
}

void PathSteps::AddQuadratic(Point from, Point control, Point to) {
    const auto between = [control](Point end) {
        return Point{end.x + (control.x - end.x) * 2 / 3, end.y + (control.y - end.y) * 2 / 3};
    };
    AddCubic(from, between(from), between(to), to);
}

void PathSteps::AddCubic(Point, Point control1, Point control2, Point to) {
    if (m_closed) Start(m_start);
    Append({.kind = PathStep::Kind::Curve, .control1 = control1, .control2 = control2, .to = to});
}

void PathSteps::AddArc(Point from, Point radii, double rotation, bool large, bool sweep, Point to) {
    if (radii.x == 0 || radii.y == 0) return Add(to);
    if (from.x == to.x && from.y == to.y) return;
    const double turn = std::fmod(rotation, 360) * std::numbers::pi / 180;
    const CenteredArc arc = FindCenter(from, radii, turn, large, sweep, to);
    const Point middle = arc.At(arc.start + arc.extent / 2);
    if (!std::isfinite(middle.x) || !std::isfinite(middle.y)) return Add(to);
    const int pieces =
        std::max(1, static_cast<int>(std::ceil(std::abs(arc.extent) / kQuarter - kAngleNoise)));
    const double piece = arc.extent / pieces;
    const double reach = std::tan(piece / 4) * 4 / 3;
    for (int i = 0; i < pieces; ++i) {
        const double begin = arc.start + i * piece;
        const double end = begin + piece;
        const Point first = i == 0 ? from : arc.At(begin);
        const Point last = i + 1 == pieces ? to : arc.At(end);
        const Point leaving = arc.SlopeAt(begin);
        const Point arriving = arc.SlopeAt(end);
        AddCubic(first, {first.x + reach * leaving.x, first.y + reach * leaving.y},
                 {last.x - reach * arriving.x, last.y - reach * arriving.y}, last);
    }
}

void PathSteps::Close() {
    if (m_closed || m_steps.empty()) return;
    m_closed = true;
    Append({.kind = PathStep::Kind::Close, .control1{}, .control2{}, .to{}});
}

}  // namespace svg
