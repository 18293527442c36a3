#include "fom/swatch_fit.h"

#include <algorithm>
#include <cmath>

#include "fom/document_units.h"

namespace command {
namespace {

/// Edges in pixels below which a tile is shown larger, and shares of the swatch above which it is shown
/// smaller.
constexpr double kLeastTile = 12;
constexpr double kLargestShare = 0.8;

ObjectBounds Around(VECTOR2D middle, double width, double height, double unitsPerPixel) {
    if (!std::isfinite(unitsPerPixel) || !(unitsPerPixel > 0)) unitsPerPixel = kUnitsPerPixel;
    if (!std::isfinite(middle.x) || !std::isfinite(middle.y)) middle = {};
    const double right = width / 2 * unitsPerPixel;
    const double down = height / 2 * unitsPerPixel;
    return {middle.x - right, middle.y - down, middle.x + right, middle.y + down};
}

ObjectBounds FitFountain(const CGE_FOUNTAINFILL& fountain, double width, double height) {
    const MATRIX m = fountain.GetTotalMatrix({});
    const double runs = fountain.GetSpreadMethod() == SpreadPad ? 1 : 2;
    if (fountain.GetFountainType() == FountainLinear) {
        const double scale = std::max(std::abs(m.a) / width, std::abs(m.b) / height);
        return Around(TransformPoint(m, {0.5, 0}), width, height, runs * scale);
    }
    const double scale = std::max(2 * std::hypot(m.a, m.c) / width, 2 * std::hypot(m.b, m.d) / height);
    return Around(TransformPoint(m, {0, 0}), width, height, runs * scale);
}

ObjectBounds FitTile(const CGE_TILING& tiling, const RECT& box, double width, double height) {
    const double share = std::max(tiling.width / width, tiling.height / height);
    const double edge = std::min(tiling.width, tiling.height);
    double unitsPerPixel = std::min(kUnitsPerPixel, edge / kLeastTile);
    unitsPerPixel = std::max(unitsPerPixel, share / kLargestShare);
    const double left = std::min(box.left, box.right);
    const double top = std::min(box.top, box.bottom);
    return Around({left + tiling.width / 2.0, top + tiling.height / 2.0}, width, height, unitsPerPixel);
}

}  // namespace

ObjectBounds FitSwatch(const CGE_FILL& fill, double width, double height) {
    const ObjectBounds plain = Around({}, width, height, kUnitsPerPixel);
    if (fill.GetType() == FillFountain && fill.Fountain().GetUnits() == FountainWorldCoordinates)
        return FitFountain(fill.Fountain(), width, height);
    const CGE_TILING* tiling = fill.GetCGETiling();
    if (!tiling || tiling->width <= 0 || tiling->height <= 0 || (tiling->flags & kTilingScaleWithObject) != 0)
        return plain;
    const CGE_PATTERNFILL* pattern = fill.Pattern();
    return FitTile(*tiling, pattern ? pattern->boundingBox : RECT(), width, height);
}

}  // namespace command
