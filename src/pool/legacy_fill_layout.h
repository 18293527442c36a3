#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "host/base/memory.h"
#include "host/base/temp_data.h"
#include "host/gfx/fill.h"

#include "pool/legacy_io.h"
#include "pool/legacy_values.h"

namespace VyrFOM {

// Every field of the fill records of 12.00 and 12.50, at its 12.00 offset; what 12.50 has beyond the kind
// stands 4 bytes later. `Io` is LegacyReader or LegacyWriter; the writer's records may be const.

inline constexpr std::size_t kNumColorsAt = 48;
inline constexpr std::size_t kStopsAt = 52;
inline constexpr std::size_t kStopSize = 16;
inline constexpr std::size_t kNumLinesAt = 180;
inline constexpr std::size_t kLineArrayAt = 184;

template <class Io, class Uniform>
void UniformFields(const Io& io, Uniform& uniform) {
    io.Color(4, uniform.color);
    ScreenAt(io, 16, uniform.screen);
}

/// A fountain's fields but for its colours, as they are stored.
struct LegacyFountain {
    ClrFountainFillType type{};
    CLR_SCREENSPEC screen;
    std::int16_t padding = 0;
    std::int32_t angle = 0, centerX = 0, centerY = 0;
    std::int16_t steps = 0;
    CgeFountainFillBlendMode blendMode{};
    std::uint16_t rateWord = 0;  ///< 12.00: the blend flag; 12.50: the blend rate method
    std::int16_t rate = 0;
    std::uint16_t colors = 0;
};

template <class Io, class Fountain>
void FountainFields(const Io& io, Fountain& fountain) {
    io.Number(4, fountain.type);
    ScreenAt(io, 8, fountain.screen);
    io.Number(24, fountain.padding);
    io.Number(28, fountain.angle);
    io.Number(32, fountain.centerX);
    io.Number(36, fountain.centerY);
    io.Number(40, fountain.steps);
    io.Number(42, fountain.blendMode);
    io.Number(44, fountain.rateWord);
    io.Number(46, fountain.rate);
    io.Number(kNumColorsAt, fountain.colors);
}

template <class Io, class Stop>
void StopFields(const Io& io, std::size_t index, Stop& stop) {
    const std::size_t at = kStopsAt + index * kStopSize;
    io.Color(at, stop.color);
    io.Number(at + 12, stop.position);
}

template <class Io, class PostScript>
void PostScriptFields(const Io& io, PostScript& postScript) {
    io.Number(4, postScript.number);
    io.Number(6, postScript.reserved);
    NumbersAt(io, 8, postScript.parameters);
}

template <class Io, class Mono>
void MonoFields(const Io& io, Mono& mono) {
    io.Object(4, udi::kPtrBlock, mono.bitmap);
    TilingAt(io, 8, mono.tiling);
    io.Color(24, mono.foreground);
    io.Color(36, mono.background);
    ScreenAt(io, 48, mono.screen);
}

/// Of what a pattern owns, `block` and `tmpFile` stand for it: their numbers are another record's.
template <class Io, class Pattern, class Block, class TmpFile>
void PatternFields(const Io& io, Pattern& pattern, Block& block, TmpFile& tmpFile) {
    io.Object(4, udi::kPtrBlock, block);
    TilingAt(io, 8, pattern.tiling);
    RectAt(io, 24, pattern.boundingBox);
    io.Object(40, kPtrObject, pattern.instance);
    io.Number(44, tmpFile);
}

template <class Io, class Texture>
void TextureFields(const Io& io, Texture& texture) {
    io.Number(48, texture.present);
    io.Number(52, texture.resolution);
    io.Number(54, texture.maxEdge);
    NameAt(io, 56, texture.library);
    NameAt(io, 120, texture.texture);
    NameAt(io, 184, texture.style);
    NumbersAt(io, 248, texture.parameters);
}

/// All but the lines; 12.50 only. `lines` says how many there are, `lineArray` whether there are any.
template <class Io, class Hatch, class Word>
void HatchFields(const Io& io, Hatch& hatch, Word& lines, Word& lineArray) {
    io.Color(4, hatch.background);
    ScreenAt(io, 16, hatch.screen);
    io.Number(32, hatch.modification);
    io.Number(36, hatch.spacingMultiplier);
    io.Number(44, hatch.thicknessMultiplier);
    NameAt(io, 52, hatch.library);
    NameAt(io, 116, hatch.name);
    io.Number(kNumLinesAt, lines);
    io.Number(kLineArrayAt, lineArray);
}

/// Length of the 12.00 record; the 12.50 one of these kinds has 4 bytes more.
constexpr std::uint32_t LegacyFillSize(std::uint32_t kind, std::uint32_t colors) noexcept {
    switch (kind) {
        case FillUniform:
            return 32;
        case FillFountain:
            return static_cast<std::uint32_t>(kStopsAt + kStopSize * colors);
        case FillPostScript:
            return 18;
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return 64;
        case FillColorBitmap:
        case FillVector:
            return 48;
        case FillTexture:
            return 352;
        default:
            return 4;
    }
}
inline constexpr std::uint32_t kLegacyHatchSize = 192;

}  // namespace VyrFOM
