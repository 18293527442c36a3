#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "host/base/error.h"

#include "fom/cairo_pointers.h"

namespace command {

/// A drawing as the independent renderer draws it.
struct Rendering {
    std::vector<std::byte> png;
    SurfacePointer picture;  ///< the same, decoded; null when there is none
    std::string fault;       ///< why not
};

/// False, with `error` filled, when the renderer does not run.
bool CheckRenderer(host::Error& error);

/// Draws an SVG file with the longer side at `size` pixels, in a process of its own, within a limited time.
/// The drawing alone is seen: nothing that it refers to beside it. Any thread. Throws bad_alloc.
Rendering RenderDrawing(const std::filesystem::path& drawing, std::size_t size);

}  // namespace command
