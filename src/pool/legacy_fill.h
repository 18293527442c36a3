#pragma once

#include <cstdint>
#include <span>

#include "host/color/context.h"
#include "host/gfx/fill.h"
#include "host/stream/ptr_remapper.h"

namespace VyrFOM {

// Records of 12.00 and 12.50 (`kVersion` 1200 and 1250) as bytes, without their hatch lines.

/// Of a kind that the layout does not know, the bytes of the kind alone.
template <unsigned kVersion>
std::uint32_t GetLegacyFillSize(const CGE_FILL& fill) noexcept;
/// Into as many zeros. Throws what the remapper throws.
template <unsigned kVersion>
void WriteLegacyFill(std::span<std::uint8_t> bytes, const CGE_FILL& fill,
                     const ColorSystem::ColorContext& context, udi::PtrRemapper& remapper);

}  // namespace VyrFOM
