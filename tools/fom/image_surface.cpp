#include "fom/image_surface.h"

#include <cairo.h>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace command {
namespace {

constexpr std::uint32_t kMostEdge = 16384;

std::uint32_t Multiply(std::uint8_t part, std::uint8_t opacity) noexcept {
    return (std::uint32_t{part} * opacity + 127) / 255;
}

}  // namespace

SurfacePointer ToSurface(const RIMAGE& image) {
    const std::uint32_t width = image.GetWidth();
    const std::uint32_t height = image.GetHeight();
    if (width > kMostEdge || height > kMostEdge) return nullptr;
    SurfacePointer surface = MakeImageSurface(static_cast<int>(width), static_cast<int>(height));
    cairo_surface_flush(surface.get());
    unsigned char* data = cairo_image_surface_get_data(surface.get());
    const int stride = cairo_image_surface_get_stride(surface.get());
    std::vector<std::uint8_t> rgba(std::size_t{width} * 4);
    for (std::uint32_t y = 0; y < height; ++y) {
        image.ReadRowRGBA(y, rgba);
        auto* row = reinterpret_cast<std::uint32_t*>(data + std::ptrdiff_t{y} * stride);
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint8_t* at = rgba.data() + 4 * x;
            row[x] = std::uint32_t{at[3]} << 24 | Multiply(at[0], at[3]) << 16 | Multiply(at[1], at[3]) << 8 |
                     Multiply(at[2], at[3]);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

}  // namespace command
