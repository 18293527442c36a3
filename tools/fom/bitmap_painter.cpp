#include <cairo.h>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/base/memory.h"
#include "host/color/convert.h"
#include "host/services/calls.h"

#include "fom/fill_painter_parts.h"
#include "fom/image_surface.h"
#include "fom/tile_painter.h"

namespace command {
namespace {

/// Pixels that a texture without an image of its own is rendered at.
constexpr std::uint32_t kTextureEdge = 256;

void PaintImage(CairoContext& target, const TileLayout& layout, const RIMAGE& image, cairo_filter_t filter) {
    const SurfacePointer surface = ToSurface(image);
    if (!surface) return;
    PaintTiles(target, layout, [&](CairoContext& tile, double width, double height) {
        cairo_scale(&tile, width / image.GetWidth(), height / image.GetHeight());
        cairo_set_source_surface(&tile, surface.get(), 0, 0);
        cairo_pattern_set_extend(cairo_get_source(&tile), CAIRO_EXTEND_PAD);
        cairo_pattern_set_filter(cairo_get_source(&tile), filter);
        cairo_paint(&tile);
    });
}

/// The two-colour pattern as an image; null when the block is damaged. Its form: width and height as 16-bit
/// numbers, then rows of bits, the highest first, padded to bytes.
std::unique_ptr<RIMAGE> ReadMonoBlock(const CGE_MONOBMPFILL& mono) {
    constexpr std::size_t header = 4;
    const std::size_t size = MEMMANGetSize(mono.bitmap);
    if (size < header) return nullptr;
    const auto* bytes = static_cast<const std::uint8_t*>(MEMMANLock(mono.bitmap));
    const std::uint32_t width = bytes[0] | std::uint32_t{bytes[1]} << 8;
    const std::uint32_t height = bytes[2] | std::uint32_t{bytes[3]} << 8;
    const std::size_t rowBytes = (width + 7) / 8;
    std::unique_ptr<RIMAGE> image;
    if (rowBytes * height <= size - header) image = RIMAGE::Create(width, height, 3, 8);
    const auto front = WClrConvert::GetDisplayRGB(ColorContext::GetActiveColorContext(), mono.foreground);
    const auto back = WClrConvert::GetDisplayRGB(ColorContext::GetActiveColorContext(), mono.background);
    std::vector<std::uint8_t> row;
    for (std::uint32_t y = 0; image && y < height; ++y) {
        row.clear();
        for (std::uint32_t x = 0; x < width; ++x) {
            const bool set = (bytes[header + y * rowBytes + x / 8] >> (7 - x % 8) & 1) != 0;
            row.insert(row.end(), (set ? front : back).begin(), (set ? front : back).end());
        }
        image->WriteRow(y, row);
    }
    MEMMANUnlock(mono.bitmap);
    return image;
}

}  // namespace

void PaintMonoBitmap(CairoContext& target, const CGE_MONOBMPFILL& mono, const ObjectBounds& object) {
    const std::unique_ptr<RIMAGE> image = ReadMonoBlock(mono);
    if (image) PaintImage(target, LayOutTiles(mono.tiling, {}, object), *image, CAIRO_FILTER_NEAREST);
}

void PaintColorBitmap(CairoContext& target, const CGE_COLORBMPFILL& bitmap, const ObjectBounds& object) {
    const RIMAGE* image = UDIIMGGetBaseImage(UDIIMGFromTmpFile(bitmap.tmpFile));
    if (image)
        PaintImage(target, LayOutTiles(bitmap.tiling, bitmap.boundingBox, object), *image, CAIRO_FILTER_BEST);
}

void PaintTexture(CairoContext& target, const CGE_TEXTUREFILL& texture, const ObjectBounds& object) {
    const TileLayout layout = LayOutTiles(texture.tiling, texture.boundingBox, object);
    if (const RIMAGE* image = UDIIMGGetBaseImage(UDIIMGFromTmpFile(texture.tmpFile)))
        return PaintImage(target, layout, *image, CAIRO_FILTER_BEST);
    const std::unique_ptr<RIMAGE> rendered =
        TXRSVR_ExecuteTextureToRImage(texture.info, kTextureEdge, kTextureEdge);
    if (rendered) PaintImage(target, layout, *rendered, CAIRO_FILTER_BEST);
}

}  // namespace command
