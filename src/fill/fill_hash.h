#pragma once

#include <cstdint>

#include "host/base/hash.h"
#include "host/gfx/fill.h"

/// Hashes that agree with the comparison of fills: records that compare equal, identity blocks included
/// (RCF_CompareCGEFills(…, false)), have equal hashes. They read nothing that the comparison does not.
namespace VyrFOM {

inline void HashTiling(host::Hasher& hasher, const CGE_TILING& tiling) noexcept {
    hasher.Bytes(&tiling, sizeof tiling);
}
inline void HashRect(host::Hasher& hasher, const RECT& rect) noexcept {
    hasher.Bytes(&rect, sizeof rect);
}
inline void HashInstance(host::Hasher& hasher, const void* instance) noexcept {
    hasher.Word(reinterpret_cast<std::uintptr_t>(instance));
}
/// Two words; `low16` fills the 16 bits of the first that are free.
inline void HashScreen(host::Hasher& hasher, const CLR_SCREENSPEC& screen, std::uint32_t overprint,
                       std::uint16_t low16 = 0) noexcept {
    hasher.Word(low16 | std::uint64_t{screen.screenId} << 16 |
                std::uint64_t{static_cast<std::uint32_t>(screen.angle)} << 32);
    hasher.Word(screen.frequency | std::uint64_t{overprint} << 32);
}
/// The header of a vector or colour bitmap fill as far as both compare it: no contents, no original box.
inline void HashPatternHeader(host::Hasher& hasher, const CGE_PATTERNFILL& pattern) noexcept {
    HashTiling(hasher, pattern.tiling);
    HashRect(hasher, pattern.boundingBox);
    HashInstance(hasher, pattern.instance);
}
void HashTextureInfo(host::Hasher& hasher, const CGE_TXRINFO& info) noexcept;
void HashHatch(host::Hasher& hasher, const CGE_HATCHFILL& hatch) noexcept;
void HashMonoBitmap(host::Hasher& hasher, const CGE_MONOBMPFILL& mono) noexcept;
/// Every kind but the uniform one.
void HashOtherFillInto(host::Hasher& hasher, const CGE_FILL& fill) noexcept;

/// Six words for a uniform fill.
inline void HashFillInto(host::Hasher& hasher, const CGE_FILL& fill) noexcept {
    if (fill.GetType() != FillUniform) return HashOtherFillInto(hasher, fill);
    const CGE_UNIFORMFILL& uniform = fill.Uniform();
    const std::uint32_t overprint = uniform.screen.overprint;
    HashScreen(hasher, uniform.screen, overprint != 0 && uniform.color.IsSpot() ? 0 : overprint, FillUniform);
    hasher.Bytes(&uniform.color, sizeof uniform.color);
}

}  // namespace VyrFOM
