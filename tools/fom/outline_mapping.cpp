#include "fom/outline_mapping.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>
#include <vector>

#include "fom/dash_mapping.h"
#include "fom/document_units.h"
#include "fom/gradient_mapping.h"
#include "fom/round_nib.h"

namespace command {
namespace {

/// The smallest angle whose miter is at most `ratio` times as long as the line is wide, millionths of a
/// degree.
std::int32_t ToMiterAngle(double ratio) noexcept {
    const double sine = ratio >= 1 ? 1 / ratio : 1;
    return static_cast<std::int32_t>(std::round(2 * std::asin(sine) * 180e6 / std::numbers::pi));
}

/// The transform of the nib; counted where it is out of range.
MATRIX NibTransform(const svg::Stroke& stroke, const svg::Matrix& transform, svg::Omissions& omissions) {
    const std::optional<MATRIX> m = FindNibTransform(stroke.nonScaling, transform);
    if (!m) omissions.Count("stroke coordinates out of range");
    return m.value_or(MATRIX());
}

void SetDashes(CGE_OUTLINE& pen, const svg::Stroke& stroke, double scale, svg::Omissions& omissions) {
    std::vector<double> lengths = stroke.dashes;
    for (double& length : lengths)
        length *= scale;
    const std::optional<DashPattern> pattern = MapDashes(lengths, omissions);
    if (!pattern) return omissions.Count("dashes");
    if (IsPhaseVisible(lengths, stroke.dashOffset * scale)) omissions.Count("dash offset");
    pen.type = OutlineDotDash;
    pen.dotDash = pattern->dots;
    pen.dotLength = pattern->dotLength;
}

bool HasColorOf(const svg::Marker& marker, const svg::Paint& paint) noexcept {
    if (paint.kind != svg::Paint::Kind::Solid) return false;
    const svg::Color &own = marker.fill.color, &line = paint.color;
    return marker.fillIsStroke || (marker.fill.kind == svg::Paint::Kind::Solid && own.r == line.r &&
                                   own.g == line.g && own.b == line.b);
}

CLR_COLORSPEC StrokeColor(const svg::Paint& paint) noexcept {
    if (paint.kind == svg::Paint::Kind::Gradient) return ToColor(paint.gradient->stops->front().color);
    return ToColor(paint.kind == svg::Paint::Kind::Pattern ? svg::Color() : paint.color);
}

}  // namespace

CGE_OUTLINE OutlineMapper::Map(const svg::Stroke& stroke, const svg::Matrix& transform,
                               svg::Omissions& omissions) {
    CGE_OUTLINE pen;
    pen.type = OutlineSolid;
    pen.color = StrokeColor(stroke.paint);
    if (stroke.paint.kind == svg::Paint::Kind::Solid && stroke.paint.color.alpha < 1)
        omissions.Count("transparency of a solid colour");
    if (stroke.opacity < 1) omissions.Count("stroke opacity");
    pen.endCaps = static_cast<std::uint16_t>(stroke.cap);
    pen.join = static_cast<std::uint16_t>(stroke.join);
    pen.SetMiterLimit(ToMiterAngle(stroke.miterLimit));
    const MATRIX nib = NibTransform(stroke, transform, omissions);
    FitRoundNib(pen, stroke.width, nib);
    if (!stroke.dashes.empty()) SetDashes(pen, stroke, StretchesOf(nib).most * kUnitsPerPixel, omissions);
    if (stroke.markerMid) omissions.Count("mid marker");
    if (stroke.markerStart || stroke.markerEnd) SetArrowheads(pen, stroke, omissions);
    return pen;
}

void OutlineMapper::SetArrowheads(CGE_OUTLINE& pen, const svg::Stroke& stroke, svg::Omissions& omissions) {
    constexpr double kThinnest = 1e-9;
    const double width = stroke.width > kThinnest ? stroke.width : kThinnest;
    const auto find = [&](const svg::Marker* marker, LineEnd end) {
        const HMEM block = marker ? m_arrowheads.Find(*marker, end, width, omissions) : nullptr;
        if (block && !HasColorOf(*marker, stroke.paint)) omissions.Count("marker colour");
        return block;
    };
    pen.leftArrow = find(stroke.markerStart, LineEnd::Start);
    pen.rightArrow = find(stroke.markerEnd, LineEnd::End);
}

}  // namespace command
