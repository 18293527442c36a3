#include "svg/walker.h"

#include <string>

#include "svg/coordinate.h"
#include "svg/measures.h"
#include "svg/scanner.h"

namespace svg {
namespace {

/// Whether the element's own conditions let it be drawn: it asks for no extension, and for English if for a
/// language.
bool MeetsConditions(host::XmlAttribute extensions, host::XmlAttribute language) {
    if (extensions) return false;
    if (!language) return true;
    Scanner in(language.Value());
    while (!in.AtEnd()) {
        if (EqualsNoCase(Trim(in.Until(',')).substr(0, 2), "en")) return true;
    }
    return false;
}

bool HoldsText(host::XmlNode element) {
    if (!Trim(element.Value()).empty()) return true;
    for (host::XmlNode node = element.FirstChild(); node; node = node.NextSibling()) {
        if (node.GetKind() == host::XmlNode::Kind::Text && !Trim(node.Value()).empty()) return true;
    }
    return false;
}

}  // namespace

void Walker::Run() {
    Frame& outer = m_frames.emplace_back();
    outer.viewport = m_reading.viewport;
    outer.next = m_reading.root;
    outer.single = true;
    m_depth = 1;
    while (m_depth > 0 && !m_reading.HasFailed()) {
        Step();
        if (m_reading.budget.IsExhausted())
            m_reading.Fail({}, "style rules or repetitions multiply beyond the limit");
    }
    m_reading.omissions.SetMuted(false);
}

void Walker::Step() {
    Frame& frame = m_frames[m_depth - 1];
    const host::XmlNode element = frame.next;
    if (!element) {
        --m_depth;
        return;
    }
    frame.next = frame.single ? host::XmlNode() : element.NextElement();
    m_reading.omissions.SetMuted(frame.muted);
    if (frame.instances > 0 && ++m_instances > kMaxInstances) {
        return m_reading.Fail(element, "\"use\" multiplies the drawing beyond 1000000 elements");
    }
    const std::string_view name = m_reading.namespaces.LocalName(element.Name());
    if (name.empty()) return;
    const Tag tag = FindTag(name);
    const bool drawn =
        frame.text ? tag == Tag::TextSpan || tag == Tag::Anchor : IsDrawn(tag) && tag != Tag::TextSpan;
    if (drawn || (frame.single && tag == Tag::Symbol)) {
        Enter(element, tag);
    } else {
        NoteUndrawn(element, tag);
    }
}

void Walker::Enter(host::XmlNode element, Tag tag) {
    if (m_depth >= Reading::kMaxDepth) {
        return m_reading.Fail(element,
                              "art nested deeper than " + std::to_string(Reading::kMaxDepth) + " levels");
    }
    if (m_frames.size() == m_depth) m_frames.emplace_back();
    const Frame& outer = m_frames[m_depth - 1];
    Frame& inner = m_frames[m_depth];
    ElementFacts facts;
    m_reading.cascade.Compute(element, outer.style, inner.style, facts);
    if (facts.foreignDefault || !inner.style.displayed) return;
    if (!MeetsConditions(facts.requiredExtensions, facts.systemLanguage)) return;
    inner.transform = outer.transform;
    if (!facts.transform.empty() && tag != Tag::Svg && tag != Tag::Symbol) {
        inner.transform = inner.transform * ReadTransform(facts.transform, m_reading.omissions);
    }
    inner.viewport = outer.viewport;
    inner.opacity = outer.opacity * inner.style.opacity;
    inner.instances = outer.instances;
    inner.muted = outer.muted;
    inner.single = false;
    inner.text = outer.text;
    NoteEffects(inner, !IsShape(tag));
    Draw(element, tag, facts, inner);
}

void Walker::Draw(host::XmlNode element, Tag tag, const ElementFacts& facts, Frame& inner) {
    switch (tag) {
        case Tag::Group:
            return Push(element, element.FirstElement());
        case Tag::Anchor:
            if (inner.text) Show(element, tag, facts, inner);
            return Push(element, element.FirstElement());
        case Tag::Svg:
        case Tag::Symbol:
            // The outermost element's coordinates are what all transforms lead to.
            if (element != m_reading.root) EnterViewport(element, inner, m_frames[m_depth - 1].element);
            return Push(element, element.FirstElement());
        case Tag::Switch:
            inner.single = true;
            return Push(element, ChooseSwitchCase(element));
        case Tag::Use:
            return EnterUse(element, facts, inner);
        case Tag::Image: {
            const bool embedded = facts.href.substr(0, 5) == "data:";
            return m_reading.omissions.Count(embedded ? "embedded image" : "external image");
        }
        case Tag::ForeignObject:
        case Tag::FlowedText:
            return NoteUndrawn(element, tag);
        case Tag::Text:
        case Tag::TextSpan:
            inner.text = true;
            Show(element, tag, facts, inner);
            return Push(element, element.FirstElement());
        default:
            return Show(element, tag, facts, inner);
    }
}

void Walker::Push(host::XmlNode element, host::XmlNode first) {
    Frame& inner = m_frames[m_depth];
    inner.element = element;
    inner.next = first;
    if (first) ++m_depth;
}

bool Walker::IsOnPath(host::XmlNode element) const {
    for (std::size_t i = 0; i < m_depth; ++i) {
        if (m_frames[i].element == element) return true;
    }
    return false;
}

void Walker::EnterUse(host::XmlNode element, const ElementFacts& facts, Frame& inner) {
    const host::XmlNode target = m_reading.ids.FindReference(facts.href);
    if (!target) {
        return m_reading.omissions.Count(facts.href.starts_with('#') || facts.href.empty()
                                             ? "unresolved reference"
                                             : "external reference");
    }
    m_reading.budget.Spend(m_depth / 8);
    if (target == element || IsOnPath(target)) return m_reading.Fail(element, "reference circle of \"use\"");
    Measures in(element, inner.style.fontSize, inner.viewport);
    inner.transform = inner.transform * Matrix::Translation(in.X("x").value_or(0), in.Y("y").value_or(0));
    if (in.AnyInvalid()) m_reading.omissions.Count("invalid length");
    inner.single = true;
    m_path.resize(inner.instances++);
    m_path.push_back({element, target, m_uses++});
    inner.muted = inner.muted || !m_instantiated.insert(target.Identity()).second;
    Push(element, target);
}

void Walker::EnterViewport(host::XmlNode element, Frame& inner, host::XmlNode sizes) {
    Measures own(element, inner.style.fontSize, inner.viewport);
    double width = own.Width("width").value_or(inner.viewport.width);
    double height = own.Height("height").value_or(inner.viewport.height);
    // A "use" may give its target another size.
    Measures given(sizes, inner.style.fontSize, inner.viewport);
    if (m_reading.namespaces.TagOf(sizes) == Tag::Use) {
        width = given.Width("width").value_or(width);
        height = given.Height("height").value_or(height);
    }
    if (m_reading.namespaces.TagOf(element) == Tag::Svg)
        inner.transform =
            inner.transform * Matrix::Translation(own.X("x").value_or(0), own.Y("y").value_or(0));
    if (own.AnyInvalid() || given.AnyInvalid()) m_reading.omissions.Count("invalid length");
    inner.viewport = {width, height};
    const std::string_view text = element.Attribute("viewBox").Value();
    const std::optional<ViewBox> box = ParseViewBox(text);
    if (!box || box->width <= 0 || box->height <= 0) {
        if (!text.empty()) m_reading.omissions.Count("invalid viewBox");
        return;
    }
    const std::string_view aspect = element.Attribute("preserveAspectRatio").Value();
    inner.transform = inner.transform * FitViewBox(*box, width, height, aspect);
    inner.viewport = {box->width, box->height};
}

host::XmlNode Walker::ChooseSwitchCase(host::XmlNode element) const {
    for (host::XmlNode child = element.FirstElement(); child; child = child.NextElement()) {
        const Tag tag = m_reading.namespaces.TagOf(child);
        if (!IsDrawn(tag) || tag == Tag::ForeignObject || tag == Tag::FlowedText) continue;
        if (MeetsConditions(child.Attribute("requiredExtensions"), child.Attribute("systemLanguage")))
            return child;
    }
    return {};
}

void Walker::NoteEffects(const Frame& inner, bool container) {
    const Style& style = inner.style;
    if (!style.clipPath.empty()) m_reading.omissions.Count("clip-path");
    if (!style.mask.empty()) m_reading.omissions.Count("mask");
    if (!style.filter.empty()) m_reading.omissions.Count("filter");
    if (!style.blendMode.empty()) m_reading.omissions.Count("blend mode");
    if (container && style.opacity < 1) m_reading.omissions.Count("group opacity");
}

void Walker::NoteUndrawn(host::XmlNode element, Tag tag) {
    if (DeclaresForeignDefault(element)) return;
    switch (tag) {
        case Tag::ForeignObject:
            return m_reading.omissions.Count("foreign object");
        case Tag::FlowedText:
            return m_reading.omissions.Count("flowed text");
        case Tag::Animation:
            return m_reading.omissions.Count("animation");
        case Tag::Script:
            return m_reading.omissions.Count("script");
        case Tag::Font:
            return m_reading.omissions.Count("embedded font");
        case Tag::Unknown:
            return m_reading.omissions.Count("unknown element");
        default:
            return;
    }
}

void Walker::NoteAnimations(host::XmlNode shape) {
    for (host::XmlNode child = shape.FirstElement(); child; child = child.NextElement()) {
        if (m_reading.namespaces.TagOf(child) == Tag::Animation) m_reading.omissions.Count("animation");
    }
}

void Walker::Show(host::XmlNode element, Tag tag, const ElementFacts& facts, const Frame& inner) {
    const Style& style = inner.style;
    if (!style.visible) return;
    if (inner.text ? !HoldsText(element)
                   : !HasGeometry(tag, element, facts.data, style, inner.viewport, m_reading.omissions))
        return;
    Shape shape;
    shape.tag = tag;
    shape.element = m_reading.namespaces.LocalName(element.Name());
    shape.id = facts.id;
    shape.transform = inner.transform;
    if (tag != Tag::Line) shape.fill = m_servers.Resolve(style.fill, style);
    shape.fillRule = style.fillRule;
    shape.fillOpacity = style.fillOpacity;
    shape.layerOpacity = inner.opacity;
    shape.instances = {m_path.data(), inner.instances};
    shape.style = &style;
    shape.viewport = inner.viewport;
    shape.xml = &m_reading.xml;
    shape.node = element;
    m_strokes.Read(tag, style, inner.viewport, shape.stroke);
    const bool both = shape.fill.kind != Paint::Kind::None && shape.stroke.paint.kind != Paint::Kind::None;
    if (style.strokeFirst && both) m_reading.omissions.Count("paint-order");
    if (!inner.text) NoteAnimations(element);
    if (!m_reading.HasFailed()) m_visit(shape);
}

}  // namespace svg
