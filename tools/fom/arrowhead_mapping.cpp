#include "fom/arrowhead_mapping.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

namespace command {
namespace {

constexpr double kThousandths = 1000;

/// From a marker's coordinates, y to the right of its x axis, to an arrowhead's, where the line ends at
/// (0, 0) and runs on along x, y to its left.
struct Placement {
    double x, y;

    POINT operator()(svg::Point p) const noexcept { return {Round(p.x * x), Round(p.y * y)}; }

private:
    static std::int32_t Round(double value) noexcept {
        constexpr double most = std::numeric_limits<std::int32_t>::max();
        return static_cast<std::int32_t>(std::round(std::clamp(value, -most, most)));
    }
};

Placement PlacementOf(const svg::Marker& marker, LineEnd end, double width) noexcept {
    const double scale = kThousandths / (marker.strokeWidthUnits ? 1 : width);
    // At its start a line runs on against the marker's x axis, and what lies right of that one lies left.
    const bool against = end == LineEnd::Start && marker.orient != svg::Marker::Orient::AutoStartReverse;
    return against ? Placement{-scale, scale} : Placement{scale, -scale};
}

CGE_ARROWSTEP MapStep(const svg::PathStep& step, const Placement& place) noexcept {
    switch (step.kind) {
        case svg::PathStep::Kind::Move:
            return {kArrowMove, place(step.to), {}, {}};
        case svg::PathStep::Kind::Line:
            return {kArrowLine, place(step.to), {}, {}};
        case svg::PathStep::Kind::Curve:
            return {kArrowCurve, place(step.to), place(step.control1), place(step.control2)};
        case svg::PathStep::Kind::Close:
            break;
    }
    return {kArrowClose, {}, {}, {}};
}

/// Sub-paths of an arrowhead overlap by the even-odd rule.
bool MayFillOtherwise(const svg::Marker& marker) noexcept {
    const auto moves =
        std::count_if(marker.outline.begin(), marker.outline.end(),
                      [](const svg::PathStep& step) { return step.kind == svg::PathStep::Kind::Move; });
    return marker.fillRule == svg::FillRule::NonZero && moves > 1;
}

}  // namespace

std::optional<CGE_ARROWHEAD> MapMarker(const svg::Marker& marker, LineEnd end, double width,
                                       svg::Omissions& omissions) {
    if (marker.outline.empty()) {
        omissions.Count("marker");
        return std::nullopt;
    }
    if (marker.fill.kind == svg::Paint::Kind::None && !marker.fillIsStroke) return std::nullopt;
    if (marker.orient == svg::Marker::Orient::Fixed) omissions.Count("marker with a fixed angle");
    if (marker.fillOpacity < 1) omissions.Count("marker opacity");
    if (MayFillOtherwise(marker)) omissions.Count("marker fill rule");
    const Placement place = PlacementOf(marker, end, width);
    CGE_ARROWHEAD head;
    head.steps.reserve(marker.outline.size());
    for (const svg::PathStep& step : marker.outline)
        head.steps.push_back(MapStep(step, place));
    if (!head.IsWellFormed()) return std::nullopt;
    return head;
}

HMEM ArrowheadCache::Find(const svg::Marker& marker, LineEnd end, double width, svg::Omissions& omissions) {
    const bool anyWidth = marker.strokeWidthUnits || marker.outline.empty();
    const Key key(&marker, end, anyWidth ? 1 : width);
    auto known = m_known.find(key);
    if (known == m_known.end()) {
        const std::size_t steps = anyWidth ? 0 : marker.outline.size();
        if (steps > m_stepsLeft) {
            omissions.Count("arrowheads of too many widths");
            return nullptr;
        }
        known = m_known.emplace(key, Make(marker, end, width)).first;
        m_stepsLeft -= steps;
    }
    omissions.Add(known->second.omissions);
    return known->second.block;
}

ArrowheadCache::Known ArrowheadCache::Make(const svg::Marker& marker, LineEnd end, double width) {
    Known known;
    const std::optional<CGE_ARROWHEAD> head = MapMarker(marker, end, width, known.omissions);
    if (!head) return known;
    known.block = SUDIRegisterArrow(head->ToBlock());
    if (!known.block) throw std::bad_alloc();
    return known;
}

}  // namespace command
