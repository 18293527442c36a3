#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <tuple>

#include "host/gfx/arrowhead.h"

#include "svg/marker.h"
#include "svg/omissions.h"

namespace command {

enum class LineEnd : unsigned char { Start, End };

/// The arrowhead that a marker is at that end of a line. `width` is that of the line in user units, above 0.
/// A marker with a fixed angle is turned along the line. Empty for content that is not one outline and for
/// what paints nothing; what an arrowhead cannot say is counted, but not its colour.
std::optional<CGE_ARROWHEAD> MapMarker(const svg::Marker& marker, LineEnd end, double width,
                                       svg::Omissions& omissions);

/// The arrowheads of one drawing, each made and registered once.
class ArrowheadCache {
public:
    /// Most steps that those of markers in user units have together, which differ for each width of a line.
    static constexpr std::size_t kMostSteps = 16384;

    /// The block of MapMarker's answer, which the process owns; null for none and, counted, for one beyond
    /// kMostSteps. Throws bad_alloc.
    HMEM Find(const svg::Marker& marker, LineEnd end, double width, svg::Omissions& omissions);

private:
    struct Known {
        HMEM block = nullptr;
        svg::Omissions omissions;
    };
    using Key = std::tuple<const svg::Marker*, LineEnd, double>;

    static Known Make(const svg::Marker& marker, LineEnd end, double width);

    std::map<Key, Known> m_known;
    std::size_t m_stepsLeft = kMostSteps;
};

}  // namespace command
