#pragma once

#include <cstdint>

#include "host/base/export.h"

enum CgeArrowFlags : std::uint32_t {
    kArrowMirrorAlong = 1,  ///< the arrowhead points backwards
    kArrowMirrorAcross = 2  ///< left and right of the line are swapped
};

/// How an arrowhead of an outline is placed, apart from its shape. In the arrowhead's coordinates, where the
/// line ends at (0, 0) and runs on along x, it is mirrored, scaled, rotated and moved, in this order.
struct FOM_API CGE_ARROWATTRIB {
    std::uint32_t flags = 0;    ///< CgeArrowFlags; other bits are kept
    std::int32_t xScale = 100;  ///< per cent, along the line
    std::int32_t yScale = 100;  ///< per cent, across it
    std::int32_t xOffset = 0;   ///< thousandths of the line's width, along the line
    std::int32_t yOffset = 0;   ///< thousandths of the line's width, to its left
    std::int32_t rotation = 0;  ///< millionths of a degree, from the line towards its left

    /// A total order over every field. Negative, 0 or positive.
    static int CompareTo(const CGE_ARROWATTRIB& a, const CGE_ARROWATTRIB& b) noexcept;
    friend bool operator==(const CGE_ARROWATTRIB&, const CGE_ARROWATTRIB&) = default;
};
