#pragma once

#include <optional>

#include "host/gfx/outline.h"

#include "svg/matrix.h"

namespace command {

/// Of the linear part: how much it stretches at most and at least.
struct Stretches {
    double most, least;
};

Stretches StretchesOf(const MATRIX& m) noexcept;

/// What becomes of the nib of a shape with that transform; the identity for a line whose width does not
/// scale. Empty for a transform out of range.
std::optional<MATRIX> FindNibTransform(bool nonScaling, const svg::Matrix& transform) noexcept;

/// Sets width, stretch and angle to what `transform` makes of a round nib of `width` user units. One that
/// stays round, up to a whole per cent, has no angle.
void FitRoundNib(CGE_OUTLINE& pen, double width, const MATRIX& transform);

}  // namespace command
