#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "host/base/error.h"

#include "fom/pen_fit.h"

namespace command {

/// The nib of a pen and lines that it draws, on the left before and on the right after the transformation:
/// the bytes of a PNG file. On the right, what the old pen's drawing is transformed to is gray where the
/// fitted pen draws nothing, and what only the fitted pen draws is orange. Empty, with the reason in `error`,
/// when the picture cannot be encoded.
std::optional<std::vector<std::byte>> DrawPenFit(const PenFit& fit, host::Error& error);

}  // namespace command
