#pragma once

#include <cstddef>
#include <cstdint>

#include "host/gfx/enums.h"

namespace VyrFOM {

// What the sections of a fill's stream record are made of: docs/formats/stream_records.md.

inline constexpr std::uint32_t kEndTag = 0;
inline constexpr std::uint32_t kLegacyTag = 1;
inline constexpr std::uint32_t kCurrentTag = 2;
/// Kind and length of the record, which open a section's payload.
inline constexpr std::uint32_t kSectionHead = 8;
/// What stands before the pen of a hatch line.
inline constexpr std::size_t kLineHead = 20;

/// No fill for a kind that is not known. The kind is looked at as it is stored, before it is cut to 16 bits.
constexpr CgeFillType KnownFillKind(std::uint32_t stored) noexcept {
    const bool known = stored <= FillFountain || (stored >= FillPostScript && stored <= FillHatch);
    return known ? static_cast<CgeFillType>(stored) : FillNone;
}

}  // namespace VyrFOM
