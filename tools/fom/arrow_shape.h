#pragma once

#include <algorithm>
#include <optional>
#include <span>

#include "host/geometry/matrix.h"
#include "host/gfx/arrow_attribute.h"
#include "host/gfx/arrowhead.h"

namespace command {

/// An arrowhead at one end of a line.
struct Arrow {
    CGE_ARROWHEAD head;
    CGE_ARROWATTRIB place;
};

/// Empty for null, and for a block that holds no arrowhead. Throws bad_alloc.
std::optional<Arrow> ReadArrow(HMEM block, const CGE_ARROWATTRIB& place);

/// From an arrowhead's coordinates to those of the line, thousandths of its width; see CGE_ARROWATTRIB.
MATRIX PlaceArrow(const CGE_ARROWATTRIB& place) noexcept;

/// Calls `use` with the steps of each sub-path, and whether it is closed.
template <class Use>
void ForEachSubPath(const CGE_ARROWHEAD& head, Use&& use) {
    auto begin = head.steps.begin();
    while (begin != head.steps.end()) {
        const auto end = std::find_if(begin + 1, head.steps.end(),
                                      [](const CGE_ARROWSTEP& step) { return step.kind == kArrowMove; });
        use(std::span<const CGE_ARROWSTEP>(begin, end), (end - 1)->kind == kArrowClose);
        begin = end;
    }
}

}  // namespace command
