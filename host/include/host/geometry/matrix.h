#pragma once

#include <array>
#include <optional>

#include "host/base/export.h"

/// A 2-D affine transform, six doubles in stored order: x' = a x + c y + tx, y' = b x + d y + ty.
/// The default is the identity.
struct MATRIX {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    /// Element by element, by value: 0.0 equals -0.0 and NaN equals nothing.
    friend bool operator==(const MATRIX&, const MATRIX&) = default;
};

struct VECTOR2D {
    double x = 0, y = 0;
    friend bool operator==(const VECTOR2D&, const VECTOR2D&) = default;
};

/// The transform that applies `second` first and then `first`.
FOM_API MATRIX operator*(const MATRIX& first, const MATRIX& second) noexcept;
FOM_API VECTOR2D TransformPoint(const MATRIX& m, VECTOR2D p) noexcept;
/// Without the translation.
FOM_API VECTOR2D TransformVector(const MATRIX& m, VECTOR2D v) noexcept;
FOM_API double Determinant(const MATRIX& m) noexcept;
/// Empty when the matrix is singular or not finite.
FOM_API std::optional<MATRIX> Inverse(const MATRIX& m) noexcept;
FOM_API bool IsFinite(const MATRIX& m) noexcept;

/// Stretches the result of `m` by (sx, sy) about the origin: m = stretch * m.
FOM_API void UTLStretchMatrix(MATRIX& m, double sx, double sy) noexcept;
/// Rotates the result of `m` about the origin, counter-clockwise in a y-up system, by millionths of a degree:
/// m = rotation * m.
FOM_API void UTLRotateMatrix(MATRIX& m, double microDegrees) noexcept;
FOM_API void UTLTranslateMatrix(MATRIX& m, double dx, double dy) noexcept;

namespace VyrMath {
inline constexpr MATRIX IdentityMatrix{};

/// A transform taken apart: M = translate * rotate(angle) * skew * stretch, angle and skew in degrees, where
/// skew maps (x, y) to (x + y tan(skew), y). Taken apart, the angle is in [-180, 180], the skew in (-90, 90),
/// xScale is not negative and a reflection shows as a negative yScale.
struct Decomposition {
    double angle = 0, skew = 0, xScale = 1, yScale = 1, xOffset = 0, yOffset = 0;
};
/// A singular matrix gives a scale of 0 and the angle of what is left; nothing traps. Compose undoes
/// Decompose, up to rounding, for every other finite matrix.
FOM_API Decomposition Decompose(const MATRIX& m) noexcept;
FOM_API MATRIX Compose(const Decomposition& d) noexcept;
}  // namespace VyrMath
