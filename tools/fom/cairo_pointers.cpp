#include "fom/cairo_pointers.h"

#include <cairo.h>
#include <new>

namespace command {

void CairoRelease::operator()(CairoContext* context) const noexcept {
    cairo_destroy(context);
}

void CairoRelease::operator()(CairoSurface* surface) const noexcept {
    cairo_surface_destroy(surface);
}

void CairoRelease::operator()(CairoPattern* pattern) const noexcept {
    cairo_pattern_destroy(pattern);
}

SurfacePointer MakeImageSurface(int width, int height) {
    SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) throw std::bad_alloc();
    return surface;
}

ContextPointer MakeContext(CairoSurface& surface) {
    ContextPointer context(cairo_create(&surface));
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) throw std::bad_alloc();
    return context;
}

}  // namespace command
