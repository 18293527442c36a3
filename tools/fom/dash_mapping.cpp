#include "fom/dash_mapping.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

#include "fom/dot_dash.h"

namespace command {
namespace {

constexpr double kSlack = 1.0 / 200;
constexpr int kMostParts = 100;
constexpr double kMostLength = std::numeric_limits<std::int32_t>::max();

using Lengths = std::span<const double>;

double RepeatOf(Lengths lengths) noexcept {
    return std::accumulate(lengths.begin(), lengths.end(), 0.0);
}

double DotsIn(double length, double dotLength) noexcept {
    const double dots = std::round(length / dotLength);
    return length > 0 ? std::max(1.0, dots) : dots;
}

bool FitsDots(Lengths lengths, double dotLength) noexcept {
    double moved = 0;
    for (const double length : lengths)
        moved += std::abs(DotsIn(length, dotLength) * dotLength - length);
    return moved <= kSlack * RepeatOf(lengths);
}

double FindDotLength(Lengths lengths) noexcept {
    double shortest = kMostLength;
    for (const double length : lengths)
        if (length > 0) shortest = std::min(shortest, length);
    for (int parts = 1; parts <= kMostParts; ++parts) {
        const double dotLength = std::round(shortest / parts);
        if (dotLength <= 1) break;
        if (FitsDots(lengths, dotLength)) return dotLength;
    }
    return 1;
}

}  // namespace

std::optional<DashPattern> MapDashes(Lengths lengths, svg::Omissions& omissions) {
    DashPattern pattern;
    if (lengths.size() > pattern.dots.element.size()) {
        omissions.Count("dashes beyond ten");
        lengths = lengths.first(pattern.dots.element.size());
    }
    const double dotLength = FindDotLength(lengths);
    pattern.dotLength = static_cast<std::uint32_t>(dotLength);
    for (const double length : lengths) {
        const double dots = std::clamp(DotsIn(length, dotLength), -1.0, kMostLength);
        pattern.dots.element[pattern.dots.count++] = dots == dots ? static_cast<std::int32_t>(dots) : -1;
    }
    if (!OUTFixDotDash(pattern.dots) || !OUTIsValidDotDash(pattern.dots)) return std::nullopt;
    return pattern;
}

bool IsPhaseVisible(Lengths lengths, double offset) noexcept {
    const double repeat = RepeatOf(lengths);
    return std::abs(std::remainder(offset, repeat)) > kSlack * repeat;
}

}  // namespace command
