#pragma once

#include <functional>

#include "host/gfx/tiling.h"

#include "fom/fill_painter.h"

namespace command {

/// How the tiles of a pattern lie, in document units.
struct TileLayout {
    double left = 0, top = 0;  ///< corner of one tile
    double width = 0, height = 0;
    double shift = 0;  ///< of every other row or column, as a share of the tile
    bool shiftsColumns = false;
    bool mirrorsAcross = false, mirrorsDown = false;
};

/// The layout of a pattern over an object. `box` is the tile where the pattern was made; see MapPattern.
TileLayout LayOutTiles(const CGE_TILING& tiling, const RECT& box, const ObjectBounds& object);

/// Pixels of the target that one tile takes.
double CountTilePixels(CairoContext& target, const TileLayout& layout);

/// Draws one tile into the rectangle from (0, 0) to the tile's size.
using TileArtist = std::function<void(CairoContext& target, double width, double height)>;

/// Covers the target's clip with tiles. Each is drawn once, at the target's resolution. Tiles without a size
/// paint nothing.
void PaintTiles(CairoContext& target, const TileLayout& layout, const TileArtist& draw);

}  // namespace command
