#include "fill/fountain_stops.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "fill/between.h"
#include "fill/color_blend.h"

namespace VyrFOM {
namespace {

bool BlendStop(const ColorContext& context, CLR_FOUNTCOLOR& out, const CLR_FOUNTCOLOR& a,
               const CLR_FOUNTCOLOR& b, double factor) {
    if (!BlendColor(context, out.color, a.color, b.color, factor)) return false;
    out.transparency = RoundBetween(a.transparency, b.transparency, factor);
    return true;
}

/// The stops of one fountain, from the first position to the last.
class StopWalk {
public:
    explicit StopWalk(const CLR_FOUNTCOLOR_ARRAY& stops) : m_stops(stops) {
        std::stable_sort(
            m_stops.begin(), m_stops.end(),
            [](const CLR_FOUNTCOLOR& a, const CLR_FOUNTCOLOR& b) { return a.position < b.position; });
    }

    bool IsAtEnd() const noexcept { return m_next == m_stops.size(); }
    /// Requires stops ahead.
    std::uint16_t Position() const noexcept { return m_stops[m_next].position; }

    /// The stops at `position`, which is the next one of either fountain; without any the one stop that shows
    /// the fountain there, in `m_between`. Empty when the neighbours do not blend.
    std::span<const CLR_FOUNTCOLOR> Take(const ColorContext& context, std::uint16_t position) {
        const std::size_t first = m_next;
        while (!IsAtEnd() && Position() == position)
            ++m_next;
        if (m_next != first) return std::span(m_stops).subspan(first, m_next - first);
        if (first == 0) return std::span(m_stops).first(1);
        if (IsAtEnd()) return std::span(m_stops).last(1);
        const CLR_FOUNTCOLOR& before = m_stops[first - 1];
        const CLR_FOUNTCOLOR& after = m_stops[first];
        const double way =
            static_cast<double>(position - before.position) / (after.position - before.position);
        if (!BlendStop(context, m_between, before, after, way)) return {};
        return std::span(&m_between, 1);
    }

private:
    CLR_FOUNTCOLOR_ARRAY m_stops;
    CLR_FOUNTCOLOR m_between;
    std::size_t m_next = 0;
};

std::uint16_t NextPosition(const StopWalk& a, const StopWalk& b) noexcept {
    if (a.IsAtEnd()) return b.Position();
    if (b.IsAtEnd()) return a.Position();
    return std::min(a.Position(), b.Position());
}

}  // namespace

bool BlendStops(const ColorContext& context, CLR_FOUNTCOLOR_ARRAY& out, const CLR_FOUNTCOLOR_ARRAY& a,
                const CLR_FOUNTCOLOR_ARRAY& b, double factor) {
    out.clear();
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    StopWalk from(a), to(b);
    while (!from.IsAtEnd() || !to.IsAtEnd()) {
        const std::uint16_t position = NextPosition(from, to);
        const auto ours = from.Take(context, position);
        const auto theirs = to.Take(context, position);
        if (ours.empty() || theirs.empty()) return false;
        for (std::size_t i = 0; i < std::max(ours.size(), theirs.size()); ++i) {
            CLR_FOUNTCOLOR stop;
            stop.position = position;
            if (!BlendStop(context, stop, ours[std::min(i, ours.size() - 1)],
                           theirs[std::min(i, theirs.size() - 1)], factor))
                return false;
            out.push_back(stop);
        }
    }
    return true;
}

}  // namespace VyrFOM
