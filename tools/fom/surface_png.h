#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "fom/cairo_pointers.h"

namespace command {

/// The bytes of a PNG file of the surface; empty when it cannot be encoded.
std::optional<std::vector<std::byte>> EncodePng(CairoSurface& surface);

}  // namespace command
