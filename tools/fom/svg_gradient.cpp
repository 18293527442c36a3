#include "fom/svg_gradient.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "fom/document_units.h"
#include "fom/fountain_ramp.h"
#include "fom/svg_definitions.h"
#include "fom/svg_number.h"

namespace command {
namespace {

/// Transforms whose parts differ by less, as a share of the largest, count as turns and stretches alone.
constexpr double kSame = 1e-9;

/// A fountain's unit space in the space of the gradient element: the shape's box, or its user space.
struct Placement {
    MATRIX matrix;
    bool inBox = false;
};

bool IsAtRest(const CGE_FOUNTAINFILL& fountain) noexcept {
    return fountain.GetAngle() == 0 && fountain.GetCenterOffsetX() == 0 && fountain.GetCenterOffsetY() == 0;
}

bool IsInBox(const CGE_FOUNTAINFILL& fountain) noexcept {
    return fountain.GetUnits() == FountainObjectBounds;
}

std::optional<Placement> Place(const CGE_FOUNTAINFILL& fountain, const MATRIX& drift,
                               const svg::Shape& shape) {
    MATRIX matrix = fountain.GetMatrix();
    if (DependsOnShape(fountain, drift)) {
        svg::Omissions known;
        const std::optional<svg::Rect> box = shape.Bounds(known);
        if (!box) return std::nullopt;
        matrix = fountain.GetTotalMatrix({box->left * kUnitsPerPixel, box->top * kUnitsPerPixel,
                                          box->right * kUnitsPerPixel, box->bottom * kUnitsPerPixel});
    } else if (IsInBox(fountain)) {
        return Placement{matrix, true};
    }
    matrix = drift * matrix;
    UTLStretchMatrix(matrix, 1 / kUnitsPerPixel, 1 / kUnitsPerPixel);
    return Placement{matrix, false};
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
    out.append(" ").append(name).append("=\"");
    AppendNumber(out, value);
    out += '"';
}

/// The colour depends on one direction only, so that two points in the user space say it all.
void AppendLine(std::string& out, const MATRIX& m, const MATRIX& inverse) {
    const double square = inverse.a * inverse.a + inverse.c * inverse.c;
    const VECTOR2D run{inverse.a / square, inverse.c / square};
    const double size = std::hypot(run.x, run.y);
    AppendAttribute(out, "x1", WithoutNoise(m.tx, size));
    AppendAttribute(out, "y1", WithoutNoise(m.ty, size));
    AppendAttribute(out, "x2", WithoutNoise(m.tx + run.x, size));
    AppendAttribute(out, "y2", WithoutNoise(m.ty + run.y, size));
}

/// Circles stay circles: the gradient needs no transform.
bool KeepsCircles(const MATRIX& m) noexcept {
    const double least = kSame * std::hypot(m.a, m.b);
    return (std::abs(m.a - m.d) <= least && std::abs(m.b + m.c) <= least) ||
           (std::abs(m.a + m.d) <= least && std::abs(m.b - m.c) <= least);
}

/// Renderers calculate with few binary places: the transform beside the circle does not change its size.
void AppendCircle(std::string& out, const MATRIX& m, VECTOR2D focus) {
    const bool plain = KeepsCircles(m);
    const double radius = plain ? std::hypot(m.a, m.b) : std::sqrt(std::abs(Determinant(m)));
    const VECTOR2D center = plain ? VECTOR2D{m.tx, m.ty} : VECTOR2D{};
    VECTOR2D way = plain ? TransformVector(m, focus) : VECTOR2D{focus.x * radius, focus.y * radius};
    AppendAttribute(out, "cx", WithoutNoise(center.x, radius));
    AppendAttribute(out, "cy", WithoutNoise(center.y, radius));
    AppendAttribute(out, "r", WithoutNoise(radius, radius));
    if (!(focus == VECTOR2D())) {
        AppendAttribute(out, "fx", WithoutNoise(center.x + way.x, radius));
        AppendAttribute(out, "fy", WithoutNoise(center.y + way.y, radius));
    }
    if (plain) return;
    const MATRIX rest{m.a / radius, m.b / radius, m.c / radius, m.d / radius, m.tx, m.ty};
    out.append(" gradientTransform=\"").append(MatrixText(rest)) += '"';
}

void AppendStop(std::string& out, const FountainRamp::Stop& stop) {
    out += "<stop offset=\"";
    AppendNumber(out, stop.offset);
    out.append("\" style=\"stop-color:").append(ColorText(stop.color));
    // A record counts transparency in steps of a 255th.
    const double half = 0.5 / 255;
    out += "!important;stop-opacity:";
    AppendNumber(out, stop.color.opacity >= 1 ? 1
                                              : RoundestWithin(std::max(0.0, stop.color.opacity - half),
                                                               stop.color.opacity + half));
    out += "!important\"/>";
}

std::string_view SpreadText(CgeFountainFillSpreadMethod spread) noexcept {
    if (spread == SpreadRepeat) return " spreadMethod=\"repeat\"";
    return spread == SpreadReflect ? " spreadMethod=\"reflect\"" : "";
}

std::string Head(std::string_view element) {
    return std::string("<").append(element).append(" id=\"") + kIdMark + "\"";
}

}  // namespace

bool DependsOnShape(const CGE_FOUNTAINFILL& fountain, const MATRIX& drift) noexcept {
    return !IsAtRest(fountain) || (IsInBox(fountain) && drift != MATRIX());
}

std::optional<std::string> GradientDefinition(const CGE_FOUNTAINFILL& fountain, const MATRIX& drift,
                                              const svg::Shape& shape, svg::Omissions& reasons) {
    const bool radial = fountain.GetFountainType() == FountainRadial;
    if (!radial && fountain.GetFountainType() != FountainLinear) {
        reasons.Count("fountain that is neither linear nor radial");
        return std::nullopt;
    }
    const std::optional<Placement> place = Place(fountain, drift, shape);
    if (!place) {
        reasons.Count("fountain of a shape without a known box");
        return std::nullopt;
    }
    const FountainRamp ramp(fountain);
    const std::optional<MATRIX> inverse = Inverse(place->matrix);
    std::string text = Head(radial ? "radialGradient" : "linearGradient");
    const std::string end = radial ? "</radialGradient>" : "</linearGradient>";
    if (!inverse) {
        AppendStop(text += '>', ramp.Stops().back());
        return text + end;
    }
    if (!place->inBox) text += " gradientUnits=\"userSpaceOnUse\"";
    if (radial) {
        AppendCircle(text, place->matrix, fountain.GetOrigin());
    } else {
        AppendLine(text, place->matrix, *inverse);
    }
    text.append(SpreadText(fountain.GetSpreadMethod())) += '>';
    for (const FountainRamp::Stop& stop : ramp.Stops())
        AppendStop(text, stop);
    return text + end;
}

}  // namespace command
