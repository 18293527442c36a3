#pragma once

#include <cstdint>
#include <vector>

#include "host/color/colorspec.h"

/// One stop of a fountain fill: 36 bytes, no padding.
struct CLR_FOUNTCOLOR {
    std::uint16_t transparency = 0;  ///< 0 opaque to 255 fully transparent
    std::uint16_t position = 0;      ///< per cent of the way, 0 to 100
    CLR_COLORSPEC color;

    /// Bytes decide.
    friend bool operator==(const CLR_FOUNTCOLOR&, const CLR_FOUNTCOLOR&) = default;
};
static_assert(sizeof(CLR_FOUNTCOLOR) == 36);

/// The stops of a fountain fill in order.
using CLR_FOUNTCOLOR_ARRAY = std::vector<CLR_FOUNTCOLOR>;
