#pragma once

#include "host/geometry/matrix.h"

#include "svg/matrix.h"

namespace command {

/// Document units in one user unit of a drawing: 96 user units and 254,000 document units make an inch.
inline constexpr double kUnitsPerPixel = 254000.0 / 96;

/// The same transform as matrices of the library are; lengths stay in user units. Zeros are positive, so that
/// equal transforms have equal bytes.
inline MATRIX ToMatrix(const svg::Matrix& m) noexcept {
    return {m.a + 0.0, m.b + 0.0, m.c + 0.0, m.d + 0.0, m.e + 0.0, m.f + 0.0};
}

/// A transform between user spaces, for lengths in document units.
inline MATRIX ToDocumentUnits(MATRIX m) noexcept {
    m.tx *= kUnitsPerPixel;
    m.ty *= kUnitsPerPixel;
    return m;
}

}  // namespace command
