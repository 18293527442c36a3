#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "host/geometry/matrix.h"

#include "fom/payload_reader.h"

namespace command {

/// What a block holds: numbers from `first` on.
struct BlockRun {
    std::uint32_t first = 0, count = 0;
};

/// Numbers from 1; 0 is none, for the matrix the identity.
struct StoredShape {
    std::uint32_t fill = 0, outline = 0, matrix = 0;
};

/// What paints the contour of a shape. The shape is counted from 0 in its block; the others are as above.
struct StoredStrokeFill {
    std::uint32_t shape = 0, fill = 0, matrix = 0;
};

struct StoredShapes {
    std::uint64_t offset = 0;  ///< of the shapes; the fills of strokes follow them
    BlockRun run;
    std::span<const std::uint8_t> matrices;
    std::span<const std::uint8_t> shapes;
    std::span<const std::uint8_t> strokeFills;

    std::uint32_t MatrixCount() const noexcept;
    std::uint32_t StrokeFillCount() const noexcept;
    StoredShape Shape(std::uint32_t index) const noexcept;
    StoredStrokeFill StrokeFill(std::uint32_t index) const noexcept;
    /// `number` as shapes have it.
    MATRIX Matrix(std::uint32_t number) const noexcept;
};

using MatrixBytes = std::array<std::uint8_t, kMatrixSize>;
MatrixBytes StoredMatrix(const MATRIX& m) noexcept;

/// Reads the payload of a shapes block, to its end.
bool ReadShapes(PayloadReader& reader, StoredShapes& stored);

}  // namespace command
