#pragma once

#include <cstdint>

namespace host {

/// Integer noise that repeats at the edges of the tile, so that tiles join without a seam. Positions are
/// fractions of the tile in 1/65536 (0 to 65535); values are 0 to 65535. The same arguments give the same
/// value everywhere.

/// A number for one lattice point.
std::uint32_t LatticeValue(std::uint32_t seed, std::uint32_t column, std::uint32_t row) noexcept;

/// Smooth noise over a lattice of `columns` by `rows` cells, each at least 1.
std::uint32_t SmoothNoise(std::uint32_t seed, std::uint32_t u, std::uint32_t v, std::uint32_t columns,
                          std::uint32_t rows) noexcept;

/// `layers` of smooth noise, each twice as fine and half as strong as the one before.
std::uint32_t LayeredNoise(std::uint32_t seed, std::uint32_t u, std::uint32_t v, std::uint32_t columns,
                           std::uint32_t rows, unsigned layers) noexcept;

/// Up and down once while the low 16 bits of `phase` run through their range.
std::uint32_t TriangleWave(std::uint64_t phase) noexcept;

}  // namespace host
