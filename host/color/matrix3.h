#pragma once

#include <array>

namespace host::detail {

using Vector3 = std::array<double, 3>;
using Matrix3 = std::array<Vector3, 3>;  // rows

constexpr Vector3 Multiply(const Matrix3& m, const Vector3& v) noexcept {
    Vector3 out{};
    for (unsigned row = 0; row < 3; ++row) {
        out[row] = m[row][0] * v[0] + m[row][1] * v[1] + m[row][2] * v[2];
    }
    return out;
}

constexpr Matrix3 Multiply(const Matrix3& a, const Matrix3& b) noexcept {
    Matrix3 out{};
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 3; ++column) {
            for (unsigned i = 0; i < 3; ++i)
                out[row][column] += a[row][i] * b[i][column];
        }
    }
    return out;
}

/// Of a non-singular matrix.
constexpr Matrix3 Invert(const Matrix3& m) noexcept {
    Matrix3 out{};
    double determinant = 0;
    for (unsigned row = 0; row < 3; ++row) {
        for (unsigned column = 0; column < 3; ++column) {
            const unsigned r1 = (row + 1) % 3, r2 = (row + 2) % 3;
            const unsigned c1 = (column + 1) % 3, c2 = (column + 2) % 3;
            out[column][row] = m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
        }
        if (row == 0) determinant = m[0][0] * out[0][0] + m[0][1] * out[1][0] + m[0][2] * out[2][0];
    }
    for (Vector3& row : out) {
        for (double& cell : row)
            cell /= determinant;
    }
    return out;
}

}  // namespace host::detail
