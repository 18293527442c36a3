#include "fom/picture_pixels.h"

#include <cairo.h>

namespace command {

Pixels::Pixels(CairoSurface& surface)
    : m_width(static_cast<std::size_t>(cairo_image_surface_get_width(&surface))),
      m_height(static_cast<std::size_t>(cairo_image_surface_get_height(&surface))),
      m_stride(static_cast<std::size_t>(cairo_image_surface_get_stride(&surface))) {
    cairo_surface_flush(&surface);
    m_data = cairo_image_surface_get_data(&surface);
}

}  // namespace command
