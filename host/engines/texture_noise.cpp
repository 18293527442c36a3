#include "engines/texture_noise.h"

namespace host {
namespace {

/// 3t^2 - 2t^3 for t in 1/65536.
std::uint64_t Ease(std::uint64_t t) noexcept {
    return (((t * t) >> 16) * (3 * 65536 - 2 * t)) >> 16;
}

std::uint64_t Mix(std::uint64_t a, std::uint64_t b, std::uint64_t t) noexcept {
    return (a * (65536 - t) + b * t) >> 16;
}

}  // namespace

std::uint32_t LatticeValue(std::uint32_t seed, std::uint32_t column, std::uint32_t row) noexcept {
    std::uint64_t x = seed * 0x9E3779B97F4A7C15u + column * 0xC2B2AE3D27D4EB4Fu + row * 0x165667B19E3779F9u;
    x = (x ^ (x >> 29)) * 0xBF58476D1CE4E5B9u;
    x = (x ^ (x >> 32)) * 0x94D049BB133111EBu;
    return static_cast<std::uint32_t>(x >> 48);
}

std::uint32_t SmoothNoise(std::uint32_t seed, std::uint32_t u, std::uint32_t v, std::uint32_t columns,
                          std::uint32_t rows) noexcept {
    const std::uint64_t x = std::uint64_t{u} * columns;
    const std::uint64_t y = std::uint64_t{v} * rows;
    const auto column = static_cast<std::uint32_t>(x >> 16);
    const auto row = static_cast<std::uint32_t>(y >> 16);
    const std::uint32_t right = (column + 1) % columns;
    const std::uint32_t below = (row + 1) % rows;
    const std::uint64_t s = Ease(x & 0xFFFF);
    const std::uint64_t upper = Mix(LatticeValue(seed, column, row), LatticeValue(seed, right, row), s);
    const std::uint64_t lower = Mix(LatticeValue(seed, column, below), LatticeValue(seed, right, below), s);
    return static_cast<std::uint32_t>(Mix(upper, lower, Ease(y & 0xFFFF)));
}

std::uint32_t LayeredNoise(std::uint32_t seed, std::uint32_t u, std::uint32_t v, std::uint32_t columns,
                           std::uint32_t rows, unsigned layers) noexcept {
    const std::uint64_t weights = (std::uint64_t{1} << layers) - 1;
    if (weights == 0) return 0;
    std::uint64_t sum = 0;
    for (unsigned layer = 0; layer < layers; ++layer) {
        const std::uint64_t weight = std::uint64_t{1} << (layers - 1 - layer);
        sum += weight * SmoothNoise(seed + layer, u, v, columns << layer, rows << layer);
    }
    return static_cast<std::uint32_t>(sum / weights);
}

std::uint32_t TriangleWave(std::uint64_t phase) noexcept {
    const auto at = static_cast<std::uint32_t>(phase & 0xFFFF);
    return at < 32768 ? at * 2 : (65535 - at) * 2;
}

}  // namespace host
