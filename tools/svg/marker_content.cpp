#include "svg/marker_content.h"

#include <utility>

#include "svg/coordinate.h"
#include "svg/shape_steps.h"

namespace svg {
namespace {

using Kind = PathStep::Kind;

bool HasEffect(const Style& style) {
    return !style.clipPath.empty() || !style.mask.empty() || !style.filter.empty() ||
           !style.blendMode.empty();
}

/// Ends the last sub-path as filling does; one without any line is dropped.
void EndSubpath(std::vector<PathStep>& steps) {
    if (steps.empty() || steps.back().kind == Kind::Close) return;
    if (steps.back().kind == Kind::Move) {
        steps.pop_back();
    } else {
        steps.push_back({.kind = Kind::Close, .control1{}, .control2{}, .to{}});
    }
}

std::vector<PathStep> CloseAndPlace(const std::vector<PathStep>& steps, const Matrix& place) {
    std::vector<PathStep> result;
    result.reserve(steps.size() + 1);
    for (const PathStep& step : steps) {
        if (step.kind == Kind::Move || step.kind == Kind::Close) EndSubpath(result);
        if (step.kind == Kind::Close) continue;
        result.push_back({.kind = step.kind,
                          .control1 = Apply(place, step.control1),
                          .control2 = Apply(place, step.control2),
                          .to = Apply(place, step.to)});
    }
    EndSubpath(result);
    return result;
}

}  // namespace

Point Apply(const Matrix& m, Point p) {
    return {m.a * p.x + m.c * p.y + m.e, m.b * p.x + m.d * p.y + m.f};
}

std::optional<Rect> BoundsOf(const std::vector<PathStep>& outline) {
    Bounds bounds;
    Point at;
    for (const PathStep& step : outline) {
        if (step.kind == Kind::Close) continue;
        if (step.kind == Kind::Curve) {
            bounds.AddCubic(at, step.control1, step.control2, step.to);
        } else {
            bounds.Add(step.to);
        }
        at = step.to;
    }
    return bounds.Result();
}

bool MarkerContent::Read(host::XmlNode element, const Style& style, const Matrix& place, Marker& marker) {
    m_frames.push_back({element.FirstElement(), style, place, style.opacity});
    bool simple = !HasEffect(style);
    while (simple && !m_frames.empty()) {
        const host::XmlNode next = m_frames.back().next;
        if (next) {
            m_frames.back().next = next.NextElement();
            simple = Visit(next);
        } else {
            m_frames.pop_back();
        }
    }
    if (!simple) return true;
    if (!m_found) return false;
    if (!BoundsOf(m_found->steps)) return true;
    marker.outline = std::move(m_found->steps);
    marker.fill = m_found->fill;
    marker.fillRule = m_found->fillRule;
    marker.fillOpacity = m_found->opacity;
    marker.fillIsStroke = m_found->fillIsStroke;
    return true;
}

bool MarkerContent::Visit(host::XmlNode element) {
    const Tag tag = m_reading.namespaces.TagOf(element);
    if (!IsDrawn(tag) || tag == Tag::TextSpan) return true;
    const Frame& outer = m_frames.back();
    Frame inner;
    ElementFacts facts;
    m_reading.cascade.Compute(element, outer.style, inner.style, facts);
    if (facts.foreignDefault || facts.requiredExtensions || !inner.style.displayed) return true;
    if (HasEffect(inner.style)) return false;
    inner.transform = outer.transform * ReadTransform(facts.transform, m_reading.omissions);
    inner.opacity = outer.opacity * inner.style.opacity;
    if (tag == Tag::Group) {
        if (m_frames.size() == kMostDepth) return false;
        inner.next = element.FirstElement();
        m_frames.push_back(std::move(inner));
        return true;
    }
    return HasOutline(tag) && VisitShape(element, tag, facts.data, inner);
}

bool MarkerContent::IsStroked(const Style& style) {
    if (style.strokeWidth.value <= 0) return false;
    return style.stroke.kind == PaintValue::Kind::ContextStroke ||
           m_servers.Resolve(style.stroke, style).kind != Paint::Kind::None;
}

bool MarkerContent::VisitShape(host::XmlNode element, Tag tag, host::XmlAttribute data, const Frame& inner) {
    const Style& style = inner.style;
    if (!style.visible) return true;
    PathSteps steps(m_most);
    AddShape(tag, element, data, style, m_viewport, m_reading.omissions, steps);
    const bool overflowed = steps.HasOverflowed();
    Found found;
    found.steps = CloseAndPlace(steps.Take(), inner.transform);
    if (overflowed || found.steps.size() > m_most) {
        m_reading.omissions.Count("marker outline too long");
        return false;
    }
    if (found.steps.empty()) return true;
    if (IsStroked(style)) return false;
    if (tag == Tag::Line) return true;
    found.fillIsStroke = style.fill.kind == PaintValue::Kind::ContextStroke;
    found.fill = m_servers.Resolve(style.fill, style);
    if (found.fill.kind == Paint::Kind::None && !found.fillIsStroke) return true;
    if (m_found) return false;
    found.fillRule = style.fillRule;
    found.opacity = inner.opacity * style.fillOpacity;
    m_found = std::move(found);
    return true;
}

}  // namespace svg
