#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "host/base/export.h"
#include "host/gfx/image.h"
#include "host/gfx/pattern_fills.h"

namespace host {

/// What the built-in textures are rendered from. Stored in the parameter block of a texture description
/// (docs/formats/textures.md).
struct TextureParameters {
    std::uint32_t seed = 0;
    RIMAGE::Rgb first;             ///< colour of the lowest values
    RIMAGE::Rgb second;            ///< colour of the highest values
    std::uint16_t scale = 100;     ///< size of the features in per cent of the texture's own, 10 to 1000
    std::uint16_t detail = 1;      ///< layers of noise, 1 to 8
    std::uint16_t contrast = 100;  ///< per cent, 0 to 1000

    friend bool operator==(const TextureParameters&, const TextureParameters&) = default;
};

using TextureBlock = std::array<std::uint8_t, 104>;

FOM_API TextureBlock EncodeTextureParameters(const TextureParameters& parameters) noexcept;
/// Numbers out of range are brought into it. Empty for a block of zeros or of no known version: the texture
/// is then rendered with its own parameters.
FOM_API std::optional<TextureParameters> DecodeTextureParameters(const TextureBlock& block) noexcept;

/// Names of the built-in library and of its textures, in order.
inline constexpr std::wstring_view kTextureLibrary = L"Standard";
FOM_API std::vector<std::wstring_view> GetTextureNames();
/// The parameters that a built-in texture comes with; empty for an unknown name.
FOM_API std::optional<TextureParameters> GetTextureDefaults(std::wstring_view texture) noexcept;

}  // namespace host
