#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "host/base/export.h"

/// Dash pattern: alternating dash and gap lengths, in units of the dot length.
struct CGE_DOTDASHSPEC {
    std::uint16_t count = 0;
    std::array<std::int32_t, 10> element{};

    /// How many elements, from the first, mean anything: `count`, at most 10.
    std::size_t Used() const noexcept { return std::min<std::size_t>(count, element.size()); }

    /// The elements that mean something.
    friend bool operator==(const CGE_DOTDASHSPEC& a, const CGE_DOTDASHSPEC& b) noexcept {
        return std::equal(a.element.begin(), a.element.begin() + a.Used(), b.element.begin(),
                          b.element.begin() + b.Used());
    }
};

/// The narrow form of older documents.
struct CGE_DOTDASHSPEC16 {
    std::uint16_t count = 0;
    std::array<std::int16_t, 10> element{};
};

/// The same pattern in the other form: the count as it stands, all ten elements. Narrowing holds an element
/// at -32768 or 32767 when it lies beyond.
FOM_API CGE_DOTDASHSPEC CGEDotDashFrom16(const CGE_DOTDASHSPEC16& narrow) noexcept;
FOM_API CGE_DOTDASHSPEC16 CGEDotDashTo16(const CGE_DOTDASHSPEC& wide) noexcept;

/// The length of one repeat in units of the dot length: the sum of the elements that mean something, negative
/// ones included.
FOM_API std::int64_t CGEDotDashDotCount(const CGE_DOTDASHSPEC& pattern) noexcept;

/// How dashes are fitted to corners and to the ends of a path. Other values are kept.
enum CGE_DASH_ADJUST : std::int32_t {
    DashAdjustNone = 0,  ///< lengths as they stand, straight on past corners
    DashAdjustGaps = 1,  ///< gaps are stretched so that a dash lies on each corner and end
    DashAdjustAll = 2    ///< as before, dashes and gaps stretched alike
};
