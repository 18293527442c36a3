#include "fom/tile_painter.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>

#include "fom/pattern_mapping.h"

namespace command {
namespace {

constexpr double kMostPixels = 2048;

/// Pixels of the target that a way in user space takes.
double PixelsOf(CairoContext& target, double x, double y) {
    cairo_user_to_device_distance(&target, &x, &y);
    return std::clamp(std::ceil(std::hypot(x, y) - 1e-6), 1.0, kMostPixels);
}

bool IsOdd(int number) noexcept {
    return number % 2 != 0;
}

/// The smallest block of tiles that repeats.
struct Block {
    int columns = 1;
    int rows = 1;
};

Block RepeatingBlock(const TileLayout& layout) noexcept {
    const bool shifts = layout.shift != 0;
    return {layout.mirrorsAcross || (shifts && layout.shiftsColumns) ? 2 : 1,
            layout.mirrorsDown || (shifts && !layout.shiftsColumns) ? 2 : 1};
}

void DrawTile(CairoContext& target, const TileLayout& layout, int column, int row, const TileArtist& draw) {
    const double right = IsOdd(row) && !layout.shiftsColumns ? layout.shift * layout.width : 0;
    const double down = IsOdd(column) && layout.shiftsColumns ? layout.shift * layout.height : 0;
    cairo_save(&target);
    cairo_translate(&target, column * layout.width + right, row * layout.height + down);
    if (layout.mirrorsAcross && IsOdd(column)) {
        cairo_translate(&target, layout.width, 0);
        cairo_scale(&target, -1, 1);
    }
    if (layout.mirrorsDown && IsOdd(row)) {
        cairo_translate(&target, 0, layout.height);
        cairo_scale(&target, 1, -1);
    }
    cairo_rectangle(&target, 0, 0, layout.width, layout.height);
    cairo_clip(&target);
    draw(target, layout.width, layout.height);
    cairo_restore(&target);
}

}  // namespace

TileLayout LayOutTiles(const CGE_TILING& tiling, const RECT& box, const ObjectBounds& object) {
    const bool shares = (tiling.flags & kTilingScaleWithObject) != 0;
    const double across = object.right - object.left;
    const double down = object.bottom - object.top;
    TileLayout layout;
    layout.width = shares ? tiling.width / 100.0 * across : tiling.width;
    layout.height = shares ? tiling.height / 100.0 * down : tiling.height;
    const double left = std::min(box.left, box.right);
    const double top = std::min(box.top, box.bottom);
    layout.left = shares ? object.left + left / kObjectSide * across : left;
    layout.top = shares ? object.top + top / kObjectSide * down : top;
    layout.left += layout.width * tiling.xOffset / 100;
    layout.top += layout.height * tiling.yOffset / 100;
    layout.shift = tiling.interTileOffset % 100 / 100.0;
    layout.shiftsColumns = (tiling.flags & kTilingColumnOffset) != 0;
    layout.mirrorsAcross = (tiling.flags & kTilingMirrorHorizontal) != 0;
    layout.mirrorsDown = (tiling.flags & kTilingMirrorVertical) != 0;
    return layout;
}

double CountTilePixels(CairoContext& target, const TileLayout& layout) {
    return PixelsOf(target, layout.width, 0) * PixelsOf(target, 0, layout.height);
}

void PaintTiles(CairoContext& target, const TileLayout& layout, const TileArtist& draw) {
    if (!(layout.width > 0) || !(layout.height > 0)) return;
    const Block block = RepeatingBlock(layout);
    const double width = layout.width * block.columns;
    const double height = layout.height * block.rows;
    const double across = PixelsOf(target, width, 0);
    const double down = PixelsOf(target, 0, height);
    const SurfacePointer surface = MakeImageSurface(static_cast<int>(across), static_cast<int>(down));
    const ContextPointer context = MakeContext(*surface);
    cairo_scale(context.get(), across / width, down / height);
    // What a shift moves out of the block at one side comes in at the other: one more to the left and above.
    const int first = layout.shift != 0 ? -1 : 0;
    for (int row = first; row < block.rows; ++row)
        for (int column = first; column < block.columns; ++column)
            DrawTile(*context, layout, column, row, draw);

    const PatternPointer pattern(cairo_pattern_create_for_surface(surface.get()));
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, across / width, 0, 0, down / height, -layout.left * across / width,
                      -layout.top * down / height);
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_GOOD);
    cairo_set_source(&target, pattern.get());
    cairo_paint(&target);
}

}  // namespace command
