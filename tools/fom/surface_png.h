#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "fom/cairo_pointers.h"

namespace command {

/// The bytes of a PNG file of the surface; empty when it cannot be encoded.
std::optional<std::vector<std::byte>> EncodePng(CairoSurface& surface);

/// The picture of a PNG file as 32-bit pixels with opacity; null when it cannot be decoded. Throws bad_alloc.
SurfacePointer DecodePng(std::span<const std::byte> png);

}  // namespace command
