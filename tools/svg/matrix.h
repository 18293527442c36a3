#pragma once

#include <optional>
#include <string_view>

namespace svg {

/// x' = a·x + c·y + e, y' = b·x + d·y + f; in user units.
struct Matrix {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    bool operator==(const Matrix&) const = default;
    bool IsIdentity() const { return *this == Matrix(); }
    bool IsFinite() const;
    /// Whether it takes no two points to one.
    bool HasInverse() const;

    static Matrix Translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
    static Matrix Scale(double x, double y) { return {x, 0, 0, y, 0, 0}; }
};

/// First `inner`, then `outer`.
Matrix operator*(const Matrix& outer, const Matrix& inner);

/// Reads a transform list; nothing when it is malformed or not finite.
std::optional<Matrix> ParseTransform(std::string_view text);

}  // namespace svg
