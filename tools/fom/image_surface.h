#pragma once

#include "host/gfx/image.h"

#include "fom/cairo_pointers.h"

namespace command {

/// The image as a surface of its size; null when an edge is longer than 16,384 pixels. Throws bad_alloc.
SurfacePointer ToSurface(const RIMAGE& image);

}  // namespace command
