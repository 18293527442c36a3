#pragma once

#include <cstdint>

/// How a pattern tile repeats: 16 bytes, no padding. See docs/formats/records.md for the flags.
struct CGE_TILING {
    std::int32_t width = 0;     ///< document units, or per cent of the object with kTilingScaleWithObject
    std::int32_t height = 0;    ///< the same
    std::uint16_t xOffset = 0;  ///< per cent of the tile width
    std::uint16_t yOffset = 0;  ///< per cent of the tile height
    std::uint16_t interTileOffset = 0;  ///< per cent of the tile, shift of every other row (or column)
    std::uint16_t flags = 0;

    friend bool operator==(const CGE_TILING&, const CGE_TILING&) = default;
};
static_assert(sizeof(CGE_TILING) == 16);

enum CgeTilingFlags : std::uint16_t {
    kTilingColumnOffset = 1,  ///< the inter-tile offset shifts columns instead of rows
    kTilingScale = 2,         ///< the tile was scaled by hand
    kTilingScaleWithObject = 4,
    kTilingNoSeams = 8,
    kTilingMirrorHorizontal = 16,
    kTilingMirrorVertical = 32,
};
