#include "fom/surface_png.h"

#include <cairo.h>
#include <cstring>
#include <new>

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

cairo_status_t TakePng(void* from, unsigned char* data, unsigned size) {
    auto& rest = *static_cast<std::span<const std::byte>*>(from);
    if (size > rest.size()) return CAIRO_STATUS_READ_ERROR;
    std::memcpy(data, rest.data(), size);
    rest = rest.subspan(size);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

std::optional<std::vector<std::byte>> EncodePng(CairoSurface& surface) {
    std::vector<std::byte> png;
    if (cairo_surface_write_to_png_stream(&surface, AppendPng, &png) != CAIRO_STATUS_SUCCESS)
        return std::nullopt;
    return png;
}

SurfacePointer DecodePng(std::span<const std::byte> png) {
    SurfacePointer stored(cairo_image_surface_create_from_png_stream(TakePng, &png));
    const cairo_status_t status = cairo_surface_status(stored.get());
    if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
    if (status != CAIRO_STATUS_SUCCESS) return nullptr;
    if (cairo_image_surface_get_format(stored.get()) == CAIRO_FORMAT_ARGB32) return stored;
    SurfacePointer surface = MakeImageSurface(cairo_image_surface_get_width(stored.get()),
                                              cairo_image_surface_get_height(stored.get()));
    const ContextPointer context = MakeContext(*surface);
    cairo_set_source_surface(context.get(), stored.get(), 0, 0);
    cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
    cairo_paint(context.get());
    return surface;
}

}  // namespace command
