#include "fom/polyline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace command {
namespace {

constexpr int kPiecesOfCurve = 32;
constexpr double kMostDashes = 20000;

double Distance(VECTOR2D a, VECTOR2D b) noexcept {
    return std::hypot(b.x - a.x, b.y - a.y);
}

VECTOR2D Between(VECTOR2D a, VECTOR2D b, double share) noexcept {
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

/// The same line, open, without repeated points.
std::vector<VECTOR2D> OpenPoints(const Polyline& line) {
    std::vector<VECTOR2D> points = line.points;
    if (line.closed && !points.empty()) points.push_back(points.front());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

/// A line that places are looked up in by their distance from its beginning.
class Measured {
public:
    /// At least two points, none equal to the one before it.
    explicit Measured(std::vector<VECTOR2D> points) : m_points(std::move(points)), m_distances{0} {
        for (std::size_t i = 1; i < m_points.size(); ++i)
            m_distances.push_back(m_distances.back() + Distance(m_points[i - 1], m_points[i]));
    }
    double Length() const noexcept { return m_distances.back(); }

    Polyline Part(double from, double to) const {
        Polyline part;
        part.points.push_back(At(from));
        auto next = std::upper_bound(m_distances.begin(), m_distances.end(), from);
        for (; next != m_distances.end() && *next < to; ++next)
            part.points.push_back(m_points[static_cast<std::size_t>(next - m_distances.begin())]);
        part.points.push_back(At(to));
        return part;
    }

private:
    VECTOR2D At(double distance) const noexcept {
        const auto after = std::upper_bound(m_distances.begin() + 1, m_distances.end() - 1, distance);
        const auto i = static_cast<std::size_t>(after - m_distances.begin());
        const double share = (distance - m_distances[i - 1]) / (m_distances[i] - m_distances[i - 1]);
        return Between(m_points[i - 1], m_points[i], share);
    }

    std::vector<VECTOR2D> m_points;
    std::vector<double> m_distances;
};

}  // namespace

void Polyline::AddCurve(VECTOR2D control1, VECTOR2D control2, VECTOR2D to) {
    const VECTOR2D from = points.back();
    for (int i = 1; i <= kPiecesOfCurve; ++i) {
        const double t = double(i) / kPiecesOfCurve;
        const VECTOR2D a = Between(from, control1, t), b = Between(control1, control2, t),
                       c = Between(control2, to, t);
        points.push_back(Between(Between(a, b, t), Between(b, c, t), t));
    }
}

double Polyline::Length() const noexcept {
    double length = closed && !points.empty() ? Distance(points.back(), points.front()) : 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += Distance(points[i - 1], points[i]);
    return length;
}

Polyline Polyline::Transformed(const MATRIX& m) const {
    Polyline result = *this;
    for (VECTOR2D& point : result.points)
        point = TransformPoint(m, point);
    return result;
}

Polyline Cut(const Polyline& line, double from, double to) {
    std::vector<VECTOR2D> points = OpenPoints(line);
    if (points.size() < 2 || !(from < to)) return {};
    return Measured(std::move(points)).Part(from, to);
}

std::vector<Polyline> CutIntoDashes(const Polyline& line, std::span<const double> lengths, double speck) {
    std::vector<VECTOR2D> points = OpenPoints(line);
    if (points.size() < 2) return {line};
    const Measured measured(std::move(points));
    const double whole = measured.Length();
    const double repeat = std::accumulate(lengths.begin(), lengths.end(), 0.0);
    if (!(whole / repeat * double(lengths.size()) < kMostDashes)) return {line};
    std::vector<Polyline> dashes;
    bool endsInDash = false;
    double place = 0;
    for (std::size_t i = 0; place < whole; i = (i + 1) % lengths.size()) {
        const double end = place + lengths[i];
        endsInDash = i % 2 == 0;
        if (endsInDash) dashes.push_back(measured.Part(place, std::min(whole, std::max(end, place + speck))));
        place = end;
    }
    if (line.closed && endsInDash && dashes.size() > 1) {
        std::vector<VECTOR2D>& last = dashes.back().points;
        const std::vector<VECTOR2D>& first = dashes.front().points;
        last.insert(last.end(), first.begin() + 1, first.end());
        dashes.erase(dashes.begin());
    }
    return dashes;
}

}  // namespace command
