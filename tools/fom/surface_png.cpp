#include "fom/surface_png.h"

#include <cairo.h>

namespace command {
namespace {

cairo_status_t AppendPng(void* to, const unsigned char* data, unsigned size) {
    auto& bytes = *static_cast<std::vector<std::byte>*>(to);
    try {
        const auto* first = reinterpret_cast<const std::byte*>(data);
        bytes.insert(bytes.end(), first, first + size);
    } catch (...) {
        return CAIRO_STATUS_NO_MEMORY;  // an exception would pass through C
    }
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::optional<std::vector<std::byte>> EncodePng(CairoSurface& surface) {
    std::vector<std::byte> png;
    if (cairo_surface_write_to_png_stream(&surface, AppendPng, &png) != CAIRO_STATUS_SUCCESS)
        return std::nullopt;
    return png;
}

}  // namespace command
