#pragma once

#include <memory>

// The drawing library's own names: its headers stay in source files.
struct _cairo;          // NOLINT(bugprone-reserved-identifier)
struct _cairo_surface;  // NOLINT(bugprone-reserved-identifier)
struct _cairo_pattern;  // NOLINT(bugprone-reserved-identifier)

namespace command {

using CairoContext = _cairo;
using CairoSurface = _cairo_surface;
using CairoPattern = _cairo_pattern;

struct CairoRelease {
    void operator()(CairoContext* context) const noexcept;
    void operator()(CairoSurface* surface) const noexcept;
    void operator()(CairoPattern* pattern) const noexcept;
};

using ContextPointer = std::unique_ptr<CairoContext, CairoRelease>;
using SurfacePointer = std::unique_ptr<CairoSurface, CairoRelease>;
using PatternPointer = std::unique_ptr<CairoPattern, CairoRelease>;

/// An empty surface of 32-bit pixels with opacity. Throws bad_alloc, also for a size that cannot be.
SurfacePointer MakeImageSurface(int width, int height);
ContextPointer MakeContext(CairoSurface& surface);

}  // namespace command
