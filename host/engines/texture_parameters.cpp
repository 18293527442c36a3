#include "host/engines/texture_parameters.h"

#include <algorithm>
#include <cstddef>

namespace host {
namespace {

constexpr std::uint32_t kVersion = 1;

// Offsets of docs/formats/textures.md.
constexpr std::size_t kVersionAt = 0, kScaleAt = 2, kSeedAt = 4, kFirstAt = 8, kSecondAt = 12, kDetailAt = 16,
                      kContrastAt = 18;

void Put(TextureBlock& block, std::size_t at, std::uint32_t value, std::size_t bytes) noexcept {
    for (std::size_t i = 0; i < bytes; ++i)
        block[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

std::uint32_t Get(const TextureBlock& block, std::size_t at, std::size_t bytes) noexcept {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i)
        value |= std::uint32_t{block[at + i]} << (8 * i);
    return value;
}

void PutColor(TextureBlock& block, std::size_t at, RIMAGE::Rgb color) noexcept {
    block[at] = color.r;
    block[at + 1] = color.g;
    block[at + 2] = color.b;
}

RIMAGE::Rgb GetColor(const TextureBlock& block, std::size_t at) noexcept {
    return {block[at], block[at + 1], block[at + 2]};
}

std::uint16_t GetWithin(const TextureBlock& block, std::size_t at, std::uint32_t low,
                        std::uint32_t high) noexcept {
    return static_cast<std::uint16_t>(std::clamp(Get(block, at, 2), low, high));
}

}  // namespace

TextureBlock EncodeTextureParameters(const TextureParameters& parameters) noexcept {
    TextureBlock block{};
    Put(block, kVersionAt, kVersion, 2);
    Put(block, kScaleAt, parameters.scale, 2);
    Put(block, kSeedAt, parameters.seed, 4);
    PutColor(block, kFirstAt, parameters.first);
    PutColor(block, kSecondAt, parameters.second);
    Put(block, kDetailAt, parameters.detail, 2);
    Put(block, kContrastAt, parameters.contrast, 2);
    return block;
}

std::optional<TextureParameters> DecodeTextureParameters(const TextureBlock& block) noexcept {
    if (Get(block, kVersionAt, 2) != kVersion) return std::nullopt;
    TextureParameters parameters;
    parameters.seed = Get(block, kSeedAt, 4);
    parameters.first = GetColor(block, kFirstAt);
    parameters.second = GetColor(block, kSecondAt);
    parameters.scale = GetWithin(block, kScaleAt, 10, 1000);
    parameters.detail = GetWithin(block, kDetailAt, 1, 8);
    parameters.contrast = GetWithin(block, kContrastAt, 0, 1000);
    return parameters;
}

}  // namespace host
