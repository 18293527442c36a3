#include "fom/fountain_ramp.h"

#include <algorithm>
#include <cmath>

#include "host/color/convert.h"

namespace command {
namespace {

double Mix(double a, double b, double share) noexcept {
    return a + (b - a) * share;
}

ScreenColor StopColor(const CLR_FOUNTCOLOR& stop) {
    ScreenColor color = ToScreen(stop.color);
    color.opacity = 1 - std::min<double>(stop.transparency, 255) / 255;
    return color;
}

}  // namespace

ScreenColor ToScreen(const CLR_COLORSPEC& color) {
    const auto rgb = WClrConvert::GetDisplayRGB(ColorContext::GetActiveColorContext(), color);
    return {rgb[0] / 255.0, rgb[1] / 255.0, rgb[2] / 255.0, 1};
}

FountainRamp::FountainRamp(const CGE_FOUNTAINFILL& fountain) : m_spread(fountain.GetSpreadMethod()) {
    const double padding = std::clamp<int>(fountain.GetPadding(), 0, 49) / 100.0;
    double least = 0;
    for (const CLR_FOUNTCOLOR& stop : fountain.GetColors()) {
        least = std::max(least, std::min(stop.position / 100.0, 1.0));
        m_stops.push_back({padding + least * (1 - 2 * padding), StopColor(stop)});
    }
    if (m_stops.empty()) m_stops.push_back({0, {0, 0, 0, 0}});
    if (fountain.GetNumSteps() > 1) CutIntoSteps(fountain.GetNumSteps());
}

void FountainRamp::CutIntoSteps(int steps) {
    const double first = m_stops.front().offset;
    const double run = m_stops.back().offset - first;
    std::vector<Stop> bands;
    for (int i = 0; i < steps; ++i) {
        const ScreenColor color = Between(first + run * i / (steps - 1));
        bands.push_back({first + run * i / steps, color});
        bands.push_back({first + run * (i + 1) / steps, color});
    }
    m_stops = std::move(bands);
}

ScreenColor FountainRamp::Between(double offset) const noexcept {
    const auto next = std::upper_bound(m_stops.begin(), m_stops.end(), offset,
                                       [](double at, const Stop& stop) { return at < stop.offset; });
    if (next == m_stops.begin()) return m_stops.front().color;
    if (next == m_stops.end()) return m_stops.back().color;
    const Stop& before = *std::prev(next);
    const double share = (offset - before.offset) / (next->offset - before.offset);
    const ScreenColor& a = before.color;
    const ScreenColor& b = next->color;
    return {Mix(a.r, b.r, share), Mix(a.g, b.g, share), Mix(a.b, b.b, share),
            Mix(a.opacity, b.opacity, share)};
}

ScreenColor FountainRamp::At(double place) const noexcept {
    if (!std::isfinite(place)) return m_stops.back().color;
    if (m_spread == SpreadRepeat) {
        place -= std::floor(place);
    } else if (m_spread == SpreadReflect) {
        place = std::abs(place - 2 * std::round(place / 2));
    }
    return Between(std::clamp(place, 0.0, 1.0));
}

}  // namespace command
