#pragma once

#include "host/geometry/matrix.h"

#include "fill/rounding.h"

/// What lies `factor` (0 to 1) of the way from `a` to `b`, in a straight line.
namespace VyrFOM {

inline double Between(double a, double b, double factor) noexcept {
    return a == b ? a : a + (b - a) * factor;
}

inline MATRIX Between(const MATRIX& a, const MATRIX& b, double factor) noexcept {
    return {Between(a.a, b.a, factor), Between(a.b, b.b, factor),   Between(a.c, b.c, factor),
            Between(a.d, b.d, factor), Between(a.tx, b.tx, factor), Between(a.ty, b.ty, factor)};
}

/// For whole numbers: halves round away from zero.
template <class T>
T RoundBetween(T a, T b, double factor) noexcept {
    return RoundTo<T>(Between(static_cast<double>(a), static_cast<double>(b), factor));
}

}  // namespace VyrFOM
