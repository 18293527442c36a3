#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "host/engines/texture_parameters.h"

namespace host {

/// One built-in texture.
struct TextureKind {
    /// The value, 0 to 65535, at a point of the tile (fractions in 1/65536), `cells` features along an edge.
    using Sampler = std::uint32_t (*)(const TextureParameters& parameters, std::uint32_t cells,
                                      std::uint32_t u, std::uint32_t v) noexcept;
    std::wstring_view name;
    std::uint32_t cells;  ///< at a scale of 100 per cent
    TextureParameters defaults;
    Sampler sample;
};

std::span<const TextureKind> GetTextureKinds() noexcept;
/// Null for an unknown name. Names compare without regard to case.
const TextureKind* FindTextureKind(std::wstring_view name) noexcept;

}  // namespace host
