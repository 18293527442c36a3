#include "fom/svg_pattern.h"

#include <cmath>
#include <cstdint>
#include <string_view>

#include "host/geometry/rect.h"

#include "fom/document_units.h"
#include "fom/fill_image.h"
#include "fom/pattern_content.h"
#include "fom/pattern_mapping.h"
#include "fom/svg_content.h"
#include "fom/svg_definitions.h"
#include "fom/svg_number.h"

namespace command {
namespace {

/// What is inherited where the definition stands must not show in the pattern.
constexpr std::string_view kPlainStyle =
    " style=\"fill:#000;fill-opacity:1;fill-rule:nonzero;stroke:none;stroke-opacity:1;stroke-width:1;"
    "stroke-linecap:butt;stroke-linejoin:miter;stroke-miterlimit:4;stroke-dasharray:none;stroke-dashoffset:0;"
    "marker-start:none;marker-mid:none;marker-end:none;color:#000;font-size:16px;visibility:visible\"";

/// A rectangle whose sides are known to half a unit of a record.
struct Box {
    double x, y, width, height;
};

double Unrounded(double units, double scale) {
    return RoundestWithin((units - 0.5) / scale, (units + 0.5) / scale);
}

Box ToBox(const RECT& rect, double scale) {
    const double width = double(rect.right) - rect.left;
    const double height = double(rect.bottom) - rect.top;
    return {Unrounded(rect.left, scale), Unrounded(rect.top, scale), Unrounded(width, scale),
            Unrounded(height, scale)};
}

bool IsShare(const CGE_PATTERNFILL& fill) noexcept {
    return (fill.tiling.flags & kTilingScaleWithObject) != 0;
}

/// The tile, as a share of the object or in user units. Its size is that of the tiling, which of a share
/// knows whole per cents only, or that of the box where the two agree.
Box TileOf(const CGE_PATTERNFILL& fill) {
    const double tileScale = IsShare(fill) ? 100 : kUnitsPerPixel;
    Box tile = ToBox(fill.boundingBox, IsShare(fill) ? kObjectSide : kUnitsPerPixel);
    const auto settle = [tileScale](double& side, std::int32_t tiled) {
        if (std::abs(side * tileScale - tiled) > 1) side = Unrounded(tiled, tileScale);
    };
    settle(tile.width, fill.tiling.width);
    settle(tile.height, fill.tiling.height);
    tile.x += tile.width * fill.tiling.xOffset / 100;
    tile.y += tile.height * fill.tiling.yOffset / 100;
    return tile;
}

bool IsPlainTiling(const CGE_TILING& tiling) noexcept {
    return tiling.interTileOffset % 100 == 0 &&
           (tiling.flags & (kTilingMirrorHorizontal | kTilingMirrorVertical)) == 0;
}

void AppendNumbers(std::string& out, std::string_view name, std::initializer_list<double> numbers) {
    out.append(" ").append(name).append("=\"");
    for (const double& number : numbers) {
        if (&number != numbers.begin()) out += ' ';
        AppendNumber(out, number);
    }
    out += '"';
}

std::string Head(const CGE_PATTERNFILL& fill, const Box& tile, const MATRIX& drift) {
    std::string text = std::string("<pattern id=\"") + kIdMark + "\"";
    if (!IsShare(fill)) text += " patternUnits=\"userSpaceOnUse\"";
    AppendNumbers(text, "x", {tile.x});
    AppendNumbers(text, "y", {tile.y});
    AppendNumbers(text, "width", {tile.width});
    AppendNumbers(text, "height", {tile.height});
    if (drift != MATRIX()) {
        const MATRIX m{
            drift.a, drift.b, drift.c, drift.d, drift.tx / kUnitsPerPixel, drift.ty / kUnitsPerPixel};
        text.append(" patternTransform=\"").append(MatrixText(m)) += '"';
    }
    return text;
}

/// How the content, which is shown from `view`, lies in the tile: the less is scaled, the fewer places are
/// lost.
void AppendView(std::string& out, const CGE_PATTERNFILL& fill, const Box& tile) {
    const RECT& rect = fill.originalBoundingBox;
    const Box view = ToBox(rect, kUnitsPerPixel);
    const auto fits = [](double side, std::int32_t low, std::int32_t high) {
        return std::abs(side * kUnitsPerPixel - (double(high) - low)) <= 0.5;
    };
    if (rect.left == 0 && rect.top == 0 && fits(tile.width, rect.left, rect.right) &&
        fits(tile.height, rect.top, rect.bottom)) {
        if (IsShare(fill)) out += " patternContentUnits=\"objectBoundingBox\"";
        return;
    }
    AppendNumbers(out, "viewBox", {view.x, view.y, view.width, view.height});
    out += " preserveAspectRatio=\"none\"";
}

std::optional<std::string> VectorPattern(const CGE_VECTORFILL& vector, const MATRIX& drift,
                                         svg::Omissions& reasons) {
    const std::optional<std::string> content = AdoptContent(ReadPatternContent(vector.tmpFile));
    const RECT& view = vector.originalBoundingBox;
    if (!content || view.right <= view.left || view.bottom <= view.top) {
        reasons.Count("pattern whose content cannot be read");
        return std::nullopt;
    }
    const Box tile = TileOf(vector);
    std::string text = Head(vector, tile, drift);
    AppendView(text, vector, tile);
    return text.append(kPlainStyle).append(">").append(*content).append("</pattern>");
}

std::optional<std::string> BitmapPattern(const CGE_COLORBMPFILL& bitmap, const MATRIX& drift,
                                         svg::Omissions& reasons) {
    const std::string uri = ImageUri(bitmap);
    if (uri.empty()) {
        reasons.Count("bitmap without an image");
        return std::nullopt;
    }
    const Box tile = TileOf(bitmap);
    std::string text = Head(bitmap, tile, drift);
    if (IsShare(bitmap)) text += " patternContentUnits=\"objectBoundingBox\"";
    text += "><image preserveAspectRatio=\"none\"";
    AppendNumbers(text, "width", {tile.width});
    AppendNumbers(text, "height", {tile.height});
    return text.append(" xlink:href=\"").append(uri).append("\"/></pattern>");
}

}  // namespace

std::optional<std::string> PatternDefinition(const CGE_FILL& fill, const MATRIX& drift,
                                             svg::Omissions& reasons) {
    const CGE_PATTERNFILL* pattern = fill.Pattern();
    if (!pattern || pattern->tiling.width <= 0 || pattern->tiling.height <= 0) {
        reasons.Count("pattern without tiles");
        return std::nullopt;
    }
    if (!IsPlainTiling(pattern->tiling)) reasons.Count("tiles that are shifted or mirrored");
    return fill.GetType() == FillVector ? VectorPattern(fill.Vector(), drift, reasons)
                                        : BitmapPattern(fill.ColorBitmap(), drift, reasons);
}

}  // namespace command
