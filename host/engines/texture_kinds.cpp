#include "engines/texture_kinds.h"

#include <array>

#include "host/base/wstring.h"

#include "engines/texture_noise.h"

namespace host {
namespace {

std::uint32_t Clouds(const TextureParameters& p, std::uint32_t cells, std::uint32_t u,
                     std::uint32_t v) noexcept {
    return LayeredNoise(p.seed, u, v, cells, cells, p.detail);
}

/// Straight veins, bent by noise.
std::uint32_t Marble(const TextureParameters& p, std::uint32_t cells, std::uint32_t u,
                     std::uint32_t v) noexcept {
    const std::uint64_t bend = LayeredNoise(p.seed, u, v, cells, cells, p.detail);
    return TriangleWave(std::uint64_t{u} * cells + 2 * bend);
}

/// Level lines of noise that is stretched along the grain.
std::uint32_t Wood(const TextureParameters& p, std::uint32_t cells, std::uint32_t u,
                   std::uint32_t v) noexcept {
    const std::uint64_t grain = LayeredNoise(p.seed, u, v, cells * 4, cells, p.detail);
    return static_cast<std::uint32_t>((grain * 6) & 0xFFFF);
}

std::uint32_t Checker(const TextureParameters&, std::uint32_t cells, std::uint32_t u,
                      std::uint32_t v) noexcept {
    // An even number of squares, or the tiles would not join.
    const std::uint64_t squares = (cells + 1) / 2 * 2;
    return (((u * squares) >> 16) + ((v * squares) >> 16)) % 2 == 0 ? 0 : 65535;
}

/// One round spot in every cell, of a size of its own.
std::uint32_t Speckle(const TextureParameters& p, std::uint32_t cells, std::uint32_t u,
                      std::uint32_t v) noexcept {
    const std::uint64_t x = std::uint64_t{u} * cells;
    const std::uint64_t y = std::uint64_t{v} * cells;
    const std::uint64_t radius =
        LatticeValue(p.seed, static_cast<std::uint32_t>(x >> 16), static_cast<std::uint32_t>(y >> 16)) / 2;
    const std::int64_t dx = static_cast<std::int64_t>(x & 0xFFFF) - 32768;
    const std::int64_t dy = static_cast<std::int64_t>(y & 0xFFFF) - 32768;
    return static_cast<std::uint64_t>(dx * dx + dy * dy) < radius * radius ? 65535 : 0;
}

constexpr std::array<TextureKind, 5> kKinds{{
    {L"Clouds", 4, {1, {64, 112, 192}, {255, 255, 255}, 100, 5, 160}, Clouds},
    {L"Marble", 3, {1, {72, 72, 88}, {240, 236, 228}, 100, 5, 100}, Marble},
    {L"Wood", 2, {1, {120, 72, 32}, {208, 152, 88}, 100, 3, 100}, Wood},
    {L"Checker", 8, {1, {0, 0, 0}, {255, 255, 255}, 100, 1, 100}, Checker},
    {L"Speckle", 16, {1, {232, 224, 208}, {96, 80, 72}, 100, 1, 100}, Speckle},
}};

}  // namespace

std::span<const TextureKind> GetTextureKinds() noexcept {
    return kKinds;
}

const TextureKind* FindTextureKind(std::wstring_view name) noexcept {
    for (const TextureKind& kind : kKinds)
        if (CompareFolded(kind.name, name) == 0) return &kind;
    return nullptr;
}

std::vector<std::wstring_view> GetTextureNames() {
    std::vector<std::wstring_view> names;
    names.reserve(std::size(kKinds));
    for (const TextureKind& kind : kKinds)
        names.push_back(kind.name);
    return names;
}

std::optional<TextureParameters> GetTextureDefaults(std::wstring_view texture) noexcept {
    const TextureKind* kind = FindTextureKind(texture);
    if (!kind) return std::nullopt;
    return kind->defaults;
}

}  // namespace host
