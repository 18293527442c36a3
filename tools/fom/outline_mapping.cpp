#include "fom/outline_mapping.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include "fom/dash_mapping.h"
#include "fom/document_units.h"
#include "fom/gradient_mapping.h"
#include "fom/pen_width.h"

namespace command {
namespace {

/// A pen of that width is fitted to the transform times the real width, so that the width is rounded once.
constexpr std::int32_t kReferenceWidth = 1 << 24;
constexpr double kThinnest = 1e-9;
constexpr double kThickest = 1e12;
/// A stretch that rounds to 0 would count as a round nib.
constexpr double kFlat = 0.005;

CLR_COLORSPEC ColorOf(const svg::Paint& paint, svg::Omissions& omissions) {
    switch (paint.kind) {
        case svg::Paint::Kind::Gradient:
            omissions.Count("gradient stroke");
            return ToColor(paint.gradient->stops->front().color);
        case svg::Paint::Kind::Pattern:
            omissions.Count("pattern stroke");
            return ToColor({});
        default:
            if (paint.color.alpha < 1) omissions.Count("transparency of a solid colour");
            return ToColor(paint.color);
    }
}

/// The smallest angle whose miter is at most `ratio` times as long as the line is wide, millionths of a
/// degree.
std::int32_t ToMiterAngle(double ratio) noexcept {
    const double sine = ratio >= 1 ? 1 / ratio : 1;
    return static_cast<std::int32_t>(std::round(2 * std::asin(sine) * 180e6 / std::numbers::pi));
}

/// Of the linear part: how much it stretches at most and at least.
struct Stretches {
    double most, least;
};

Stretches StretchesOf(const MATRIX& m) noexcept {
    const double sum = std::hypot(m.a + m.d, m.b - m.c) / 2;
    const double difference = std::hypot(m.a - m.d, m.b + m.c) / 2;
    return {sum + difference, std::abs(sum - difference)};
}

/// The transform of the nib; counted where it is out of range.
MATRIX NibTransform(const svg::Stroke& stroke, const svg::Matrix& transform, svg::Omissions& omissions) {
    if (stroke.nonScaling) return {};
    const MATRIX m{transform.a, transform.b, transform.c, transform.d, 0, 0};
    const double most = StretchesOf(m).most;
    if (most <= kThickest) return m;
    omissions.Count("stroke coordinates out of range");
    return {};
}

void SetNib(CGE_OUTLINE& pen, double width, const MATRIX& transform) {
    pen.width = kReferenceWidth;
    MATRIX scaled = transform;
    const double scale = width * kUnitsPerPixel / kReferenceWidth;
    UTLStretchMatrix(scaled, scale, scale);
    OUTPreAdjustPenWidth(pen, &scaled);
    pen.width = std::max(pen.width, 1);
    const Stretches stretches = StretchesOf(transform);
    if (stretches.least < stretches.most * kFlat) {
        pen.nibStretch = 1;
    } else if (pen.nibStretch == 100) {
        pen.nibAngle = 0;
    }
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
    if (marker.fillIsStroke) return true;
    const svg::Color &own = marker.fill.color, &line = paint.color;
    return marker.fill.kind == svg::Paint::Kind::Solid && paint.kind == svg::Paint::Kind::Solid &&
           own.r == line.r && own.g == line.g && own.b == line.b;
}

}  // namespace

CGE_OUTLINE OutlineMapper::Map(const svg::Stroke& stroke, const svg::Matrix& transform,
                               svg::Omissions& omissions) {
    CGE_OUTLINE pen;
    pen.type = OutlineSolid;
    pen.color = ColorOf(stroke.paint, omissions);
    if (stroke.opacity < 1) omissions.Count("stroke opacity");
    pen.endCaps = static_cast<std::uint16_t>(stroke.cap);
    pen.join = static_cast<std::uint16_t>(stroke.join);
    pen.SetMiterLimit(ToMiterAngle(stroke.miterLimit));
    const MATRIX nib = NibTransform(stroke, transform, omissions);
    SetNib(pen, stroke.width > 0 ? std::min(stroke.width, kThickest) : 0, nib);
    if (!stroke.dashes.empty()) SetDashes(pen, stroke, StretchesOf(nib).most * kUnitsPerPixel, omissions);
    if (stroke.markerMid) omissions.Count("mid marker");
    if (stroke.markerStart || stroke.markerEnd) SetArrowheads(pen, stroke, omissions);
    return pen;
}

void OutlineMapper::SetArrowheads(CGE_OUTLINE& pen, const svg::Stroke& stroke, svg::Omissions& omissions) {
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
