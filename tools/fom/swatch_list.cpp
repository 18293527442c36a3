#include "fom/swatch_list.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "fom/fountain_ramp.h"
#include "fom/import_report.h"

namespace command {
namespace {

constexpr double kHues = 12;
constexpr double kGray = 0.08;

/// The colour that a fill makes from afar; black for one without colours.
ScreenColor Impression(const CGE_FILL& fill) {
    if (fill.GetType() == FillUniform) return ToScreen(fill.Uniform().color);
    ScreenColor sum{0, 0, 0, 0};
    if (fill.GetType() != FillFountain) return sum;
    const CLR_FOUNTCOLOR_ARRAY& stops = fill.Fountain().GetColors();
    for (const CLR_FOUNTCOLOR& stop : stops) {
        const ScreenColor color = ToScreen(stop.color);
        const auto count = static_cast<double>(stops.size());
        sum = {sum.r + color.r / count, sum.g + color.g / count, sum.b + color.b / count, 1};
    }
    return sum;
}

ScreenColor Impression(const Swatch& swatch) {
    return swatch.fill ? Impression(*swatch.fill->GetCGEFill())
                       : ToScreen(swatch.outline->GetCGEOutline()->color);
}

int WidthOf(const Swatch& swatch) noexcept {
    return swatch.outline ? swatch.outline->GetCGEOutline()->width : 0;
}

/// Hue from 0 (red) to 6, for a colour that is not gray.
double HueOf(const ScreenColor& c, double most, double chroma) noexcept {
    if (most == c.r) return std::fmod((c.g - c.b) / chroma + 6, 6.0);
    return most == c.g ? (c.b - c.r) / chroma + 2 : (c.r - c.g) / chroma + 4;
}

/// Where a colour goes: hue, then lightness, then hue exactly.
std::tuple<int, double, double> ColorKey(const ScreenColor& c) noexcept {
    const double most = std::max({c.r, c.g, c.b});
    const double chroma = most - std::min({c.r, c.g, c.b});
    const double light = 0.299 * c.r + 0.587 * c.g + 0.114 * c.b;
    if (chroma <= kGray) return {-1, light, 0};
    const double hue = HueOf(c, most, chroma);
    return {static_cast<int>(std::lround(hue / 6 * kHues)) % static_cast<int>(kHues), light, hue};
}

void SortByColor(std::vector<Swatch>& swatches) {
    using Keyed = std::pair<std::tuple<int, double, double, int>, Swatch>;
    std::vector<Keyed> keyed;
    keyed.reserve(swatches.size());
    for (const Swatch& swatch : swatches)
        keyed.emplace_back(std::tuple_cat(ColorKey(Impression(swatch)), std::tuple(WidthOf(swatch))), swatch);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const Keyed& a, const Keyed& b) { return a.first < b.first; });
    for (std::size_t i = 0; i < keyed.size(); ++i)
        swatches[i] = keyed[i].second;
}

/// A swatch on its way into the list.
struct Candidate {
    std::size_t place = 0;  ///< in the pool's order
    std::size_t group = 0;
    Swatch swatch;
};

/// Puts the swatch into a group; those of a group come one after the other.
void AddCandidate(std::vector<Candidate>& found, SwatchList& list, const char* kind, const Swatch& swatch) {
    const bool isOutline = swatch.outline != nullptr;
    if (list.groups.empty() || list.groups.back().kind != kind || list.groups.back().isOutlines != isOutline)
        list.groups.push_back({kind, isOutline, 0, {}});
    ++list.groups.back().total;
    ++(isOutline ? list.outlines : list.fills);
    found.push_back({found.size(), list.groups.size() - 1, swatch});
}

std::vector<Candidate> FindCandidates(const PaintDocument& document, SwatchList& list) {
    std::vector<Candidate> found;
    document.Pool()->Enumerate([&](const WRefCountFill* fill) {
        if (!fill->GetCGEFill()) return true;
        const Swatch swatch{fill, nullptr, static_cast<std::size_t>(fill->GetReference())};
        AddCandidate(found, list, FillKindName(fill->GetFillType()), swatch);
        return true;
    });
    document.OutlinePool().Enumerate([&](const WRefCountOutline* outline) {
        const Swatch swatch{nullptr, outline, static_cast<std::size_t>(outline->GetReference())};
        const auto kind = static_cast<CgeOutlineType>(outline->GetCGEOutline()->type & 15);
        AddCandidate(found, list, PenKindName(kind), swatch);
        return true;
    });
    return found;
}

/// The most used, but no kind is crowded out: half of the places are for all kinds alike.
void KeepMostUsed(std::vector<Candidate>& found, std::size_t limit, std::size_t kinds) {
    if (found.size() <= limit) return;
    std::stable_sort(found.begin(), found.end(),
                     [](const Candidate& a, const Candidate& b) { return a.swatch.uses > b.swatch.uses; });
    const std::size_t share = limit / 2 / kinds;
    std::vector<std::size_t> taken(kinds, 0);
    std::stable_partition(found.begin(), found.end(),
                          [&](const Candidate& candidate) { return taken[candidate.group]++ < share; });
    found.resize(limit);
    std::sort(found.begin(), found.end(),
              [](const Candidate& a, const Candidate& b) { return a.place < b.place; });
}

}  // namespace

SwatchList ListSwatches(const PaintDocument& document, std::size_t limit) {
    SwatchList list;
    std::vector<Candidate> found = FindCandidates(document, list);
    KeepMostUsed(found, limit, list.groups.size());
    list.shown = found.size();
    for (const Candidate& candidate : found)
        list.groups[candidate.group].swatches.push_back(candidate.swatch);
    for (SwatchGroup& group : list.groups)
        SortByColor(group.swatches);
    std::erase_if(list.groups, [](const SwatchGroup& group) { return group.swatches.empty(); });
    return list;
}

}  // namespace command
