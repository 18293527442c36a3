#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "host/gfx/dot_dash.h"

#include "svg/omissions.h"

namespace command {

/// Dashes as an outline holds them: whole multiples of the dot length, which is in document units.
struct DashPattern {
    CGE_DOTDASHSPEC dots;
    std::uint32_t dotLength = 0;
};

/// The dashes and gaps, in document units, in the largest dot length that moves them by no more than 1/200 of
/// the repeat all together; where there is none in whole hundredths of the shortest one, in document units. A
/// length above 0 never becomes 0. Of more than ten the first ten stay, counted. Empty where nothing is left
/// that OUTIsValidDotDash accepts.
std::optional<DashPattern> MapDashes(std::span<const double> lengths, svg::Omissions& omissions);

/// Whether dashes that start so far into the pattern differ visibly from those that start with it.
bool IsPhaseVisible(std::span<const double> lengths, double offset) noexcept;

}  // namespace command
