#pragma once

#include <cstdint>

#include "host/base/export.h"

/// The halftone screen of a colour: 16 bytes, no padding.
struct FOM_API CLR_SCREENSPEC {
    std::uint16_t screenId = 0;
    std::uint16_t reserved = 0;     ///< kept 0
    std::uint32_t overprint = 0;    ///< 1 on, 0 off
    std::int32_t angle = 45000000;  ///< millionths of a degree
    std::uint32_t frequency = 60;   ///< lines per inch

    /// Identifier 0, no overprint, 45 degrees, 60 lines per inch: what a default-constructed screen is.
    void Init() noexcept { *this = CLR_SCREENSPEC(); }

    /// Byte-wise: identifier, angle, frequency, then (with `withOverprint`) the overprint word.
    /// Negative, 0 or positive.
    static int CompareTo(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b, bool withOverprint) noexcept;

    friend bool operator==(const CLR_SCREENSPEC&, const CLR_SCREENSPEC&) = default;
};
static_assert(sizeof(CLR_SCREENSPEC) == 16);
