#include "fom/gradient_mapping.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "fom/document_units.h"

namespace command {
namespace {

/// Drawings that were written with few digits say 0.33333 for a third: that much is no change, in per cent.
constexpr double kRoundingNoise = 1e-3;
constexpr std::size_t kMaxStops = 65535;

CLR_FOUNTCOLOR MapStop(const svg::Stop& stop, svg::Omissions& omissions) {
    const double percent = stop.offset * 100;
    const double whole = std::round(percent);
    if (std::abs(percent - whole) > kRoundingNoise) omissions.Count("stop offset between whole per cents");
    CLR_FOUNTCOLOR result;
    result.position = static_cast<std::uint16_t>(whole);
    const double alpha = std::clamp(static_cast<double>(stop.color.alpha), 0.0, 1.0);
    result.transparency = static_cast<std::uint16_t>(std::lround(255 * (1 - alpha)));
    result.color = ToColor(stop.color);
    return result;
}

CLR_FOUNTCOLOR_ARRAY MapStops(const svg::Gradient& gradient, svg::Omissions& omissions) {
    const std::size_t count = std::min(gradient.stops->size(), kMaxStops);
    if (count < gradient.stops->size()) omissions.Count("stops beyond 65535", gradient.stops->size() - count);
    CLR_FOUNTCOLOR_ARRAY stops;
    stops.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        stops.push_back(MapStop((*gradient.stops)[i], omissions));
    return stops;
}

/// From the unit space to the gradient's own coordinates.
MATRIX UnitMatrix(const svg::Gradient& g) {
    if (g.kind == svg::Gradient::Kind::Radial) return {g.r, 0, 0, g.r, g.cx, g.cy};
    const double dx = g.x2 - g.x1;
    const double dy = g.y2 - g.y1;
    return {dx, dy, 0.0 - dy, dx, g.x1, g.y1};
}

/// The focal point in the unit space. Outside the circle it is the tip of a cone.
VECTOR2D MapFocus(const svg::Gradient& g, svg::Omissions& omissions) {
    if (g.fr > 0) omissions.Count("focal radius");
    const VECTOR2D focus{(g.fx - g.cx) / g.r + 0.0, (g.fy - g.cy) / g.r + 0.0};
    if (std::isfinite(focus.x) && std::isfinite(focus.y)) return focus;
    omissions.Count("gradient coordinates out of range");
    return {};
}

CgeFountainFillSpreadMethod MapSpread(svg::Spread spread) noexcept {
    if (spread == svg::Spread::Reflect) return SpreadReflect;
    return spread == svg::Spread::Repeat ? SpreadRepeat : SpreadPad;
}

}  // namespace

CLR_COLORSPEC ToColor(const svg::Color& color) noexcept {
    CLR_COLORSPEC result;
    result.MakeRGB(color.r, color.g, color.b);
    return result;
}

CGE_FOUNTAINFILL MapGradient(const svg::Gradient& gradient, svg::Omissions& omissions) {
    CGE_FOUNTAINFILL fountain;
    const bool radial = gradient.kind == svg::Gradient::Kind::Radial;
    fountain.SetFountainType(radial ? FountainRadial : FountainLinear);
    fountain.SetAnisotropic(true);
    fountain.SetSpreadMethod(MapSpread(gradient.spread));
    fountain.SetColors(MapStops(gradient, omissions));
    if (radial) fountain.SetOrigin(MapFocus(gradient, omissions));

    MATRIX matrix = ToMatrix(gradient.transform) * UnitMatrix(gradient);
    if (gradient.units == svg::Units::UserSpaceOnUse) {
        fountain.SetUnits(FountainWorldCoordinates);
        UTLStretchMatrix(matrix, kUnitsPerPixel, kUnitsPerPixel);
    }
    if (IsFinite(matrix)) {
        fountain.SetMatrix({matrix.a + 0.0, matrix.b + 0.0, matrix.c + 0.0, matrix.d + 0.0, matrix.tx + 0.0,
                            matrix.ty + 0.0});
    } else {
        omissions.Count("gradient coordinates out of range");
    }
    return fountain;
}

}  // namespace command
