#include "svg/stroke_reader.h"

#include <cmath>
#include <utility>

#include "svg/dash_array.h"

namespace svg {
namespace {

bool HasMarkers(const Style& style) {
    return !style.markerStart.empty() || !style.markerMid.empty() || !style.markerEnd.empty();
}

}  // namespace

void StrokeReader::Read(Tag tag, const Style& style, const Viewport& viewport, Stroke& stroke) {
    const bool hasMarkers = HasMarkers(style) && CanHaveMarkers(tag);
    if (style.stroke.kind != PaintValue::Kind::None) {
        const double whole = viewport.Diagonal();
        stroke.width = Resolve(style.strokeWidth, style, whole, 1, "invalid value of stroke-width");
        if (stroke.width > 0) {
            stroke.paint = m_servers.Resolve(style.stroke, style);
        } else if (style.stroke.kind == PaintValue::Kind::Reference) {
            m_servers.Touch(style.stroke.reference);
        }
        if (stroke.paint.kind != Paint::Kind::None) {
            stroke.opacity = style.strokeOpacity;
            stroke.cap = style.lineCap;
            stroke.join = style.lineJoin;
            stroke.miterLimit = style.miterLimit;
            stroke.nonScaling = style.nonScalingStroke;
            if (!style.dashArray.empty()) ReadDashes(style, whole, stroke);
            if (hasMarkers) ReadMarkers(style, stroke);
            return;
        }
    }
    if (hasMarkers) m_reading.omissions.Count("marker without stroke");
}

void StrokeReader::ReadDashes(const Style& style, double whole, Stroke& stroke) {
    m_reading.budget.Spend(style.dashArray.size() / 4);
    DashArray array = ReadDashArray(style.dashArray, style.fontSize, whole);
    if (!array.isValid) m_reading.omissions.Count("invalid value of stroke-dasharray");
    if (array.isCut) m_reading.omissions.Count("dash array of more than 1000 entries");
    stroke.dashes = std::move(array.dashes);
    if (!stroke.dashes.empty())
        stroke.dashOffset = Resolve(style.dashOffset, style, whole, 0, "invalid value of stroke-dashoffset");
}

void StrokeReader::ReadMarkers(const Style& style, Stroke& stroke) {
    const auto find = [this](std::string_view reference) {
        return reference.empty() ? nullptr : m_markers.Find(reference);
    };
    stroke.markerStart = find(style.markerStart);
    stroke.markerMid = find(style.markerMid);
    stroke.markerEnd = find(style.markerEnd);
}

double StrokeReader::Resolve(const Length& length, const Style& style, double whole, double otherwise,
                             std::string_view fault) {
    const double value = length.Resolve(style.fontSize, whole);
    if (std::isfinite(value)) return value;
    m_reading.omissions.Count(fault);
    return otherwise;
}

}  // namespace svg
