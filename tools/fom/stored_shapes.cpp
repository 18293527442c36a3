#include "fom/stored_shapes.h"

#include <bit>

namespace command {

namespace {

template <class Record>
Record ReadWords(std::span<const std::uint8_t> records, std::uint32_t index) noexcept {
    const std::uint8_t* at = records.data() + std::size_t{index} * kShapeSize;
    return {host::LoadLittle<std::uint32_t>(at), host::LoadLittle<std::uint32_t>(at + 4),
            host::LoadLittle<std::uint32_t>(at + 8)};
}

}  // namespace

std::uint32_t StoredShapes::MatrixCount() const noexcept {
    return static_cast<std::uint32_t>(matrices.size() / kMatrixSize);
}

std::uint32_t StoredShapes::StrokeFillCount() const noexcept {
    return static_cast<std::uint32_t>(strokeFills.size() / kStrokeFillSize);
}

StoredShape StoredShapes::Shape(std::uint32_t index) const noexcept {
    return ReadWords<StoredShape>(shapes, index);
}

StoredStrokeFill StoredShapes::StrokeFill(std::uint32_t index) const noexcept {
    static_assert(kStrokeFillSize == kShapeSize);
    return ReadWords<StoredStrokeFill>(strokeFills, index);
}

MATRIX StoredShapes::Matrix(std::uint32_t number) const noexcept {
    if (number == 0) return {};
    const std::uint8_t* at = matrices.data() + std::size_t{number - 1} * kMatrixSize;
    std::array<double, 6> m;
    for (double& element : m) {
        element = std::bit_cast<double>(host::LoadLittle<std::uint64_t>(at));
        at += sizeof element;
    }
    return {m[0], m[1], m[2], m[3], m[4], m[5]};
}

MatrixBytes StoredMatrix(const MATRIX& m) noexcept {
    MatrixBytes bytes;
    std::uint8_t* at = bytes.data();
    for (const double element : {m.a, m.b, m.c, m.d, m.tx, m.ty})
        at = host::StoreLittle(at, std::bit_cast<std::uint64_t>(element));
    return bytes;
}

bool ReadShapes(PayloadReader& reader, StoredShapes& stored) {
    std::uint32_t matrices = 0, strokeFills = 0;
    if (!reader.Read(stored.run.first, stored.run.count, matrices, strokeFills)) return false;
    const std::uint64_t matrixBytes = std::uint64_t{matrices} * kMatrixSize;
    const std::uint64_t shapeBytes = std::uint64_t{stored.run.count} * kShapeSize;
    const std::uint64_t strokeFillBytes = std::uint64_t{strokeFills} * kStrokeFillSize;
    if (matrixBytes + shapeBytes + strokeFillBytes != reader.Remaining())
        return reader.Fail("matrices, shapes and fills of strokes do not fill the block");
    if (!reader.ReadBytes(static_cast<std::size_t>(matrixBytes), stored.matrices)) return false;
    stored.offset = reader.Offset();
    return reader.ReadBytes(static_cast<std::size_t>(shapeBytes), stored.shapes) &&
           reader.ReadBytes(static_cast<std::size_t>(strokeFillBytes), stored.strokeFills);
}

}  // namespace command
