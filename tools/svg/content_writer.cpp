#include "svg/content_writer.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "svg/scanner.h"
#include "svg/values.h"

namespace svg {
namespace {

constexpr double kMostDrawn = 1'000'000;

void AppendEscaped(std::string& out, std::string_view text) {
    for (const char c : text) {
        if (c == '&') {
            out += "&amp;";
        } else if (c == '<') {
            out += "&lt;";
        } else if (c == '"') {
            out += "&quot;";
        } else {
            out += c;
        }
    }
}

std::string WithoutBlanks(std::string_view text) {
    std::string result;
    std::copy_if(text.begin(), text.end(), std::back_inserter(result), [](char c) { return !IsSpace(c); });
    return result;
}

/// Whether styles reach the element from where it stands rather than from where it is used.
bool InheritsInPlace(Tag tag) {
    return IsPaintServer(tag) || tag == Tag::ClipPath || tag == Tag::Mask || tag == Tag::Marker ||
           tag == Tag::Filter;
}

/// How often what a property of an element names is drawn.
ContentGraph::Reach ReachOf(const Property& property, bool handedDown) {
    if (property.name.starts_with("marker")) return ContentGraph::Reach::EachVertex;
    return handedDown ? ContentGraph::Reach::EachElement : ContentGraph::Reach::Once;
}

/// The steps of filters that an element is, or asks for: each function of the property is one.
std::size_t CountFilterSteps(const std::map<std::string, std::string, std::less<>>& attributes,
                             std::string_view name) {
    const auto filter = attributes.find("filter");
    std::size_t steps = name.starts_with("fe") ? 1 : 0;
    if (filter != attributes.end())
        steps += static_cast<std::size_t>(std::count(filter->second.begin(), filter->second.end(), '('));
    return steps;
}

}  // namespace

ContentWriter::ContentWriter(Reading& reading, host::XmlNode owner) : m_reading(reading), m_owner(owner) {
    m_graph.AddPart();
    m_numbers.emplace(owner.Identity(), 0);
}

std::string ContentWriter::Write() {
    Attributes inherited;
    CollectInherited(m_owner, inherited);
    CollectDeclared(m_owner, true, inherited);
    if (!inherited.empty()) {
        m_out += "<g";
        WriteAttributes(inherited);
        m_out += '>';
    }
    for (host::XmlNode child = m_owner.FirstElement(); child; child = child.NextElement()) {
        if (IsWritten(child, m_owner)) WriteTree(child, false);
    }
    if (!inherited.empty()) m_out += "</g>";
    if (!m_targets.empty()) m_out += "<defs>";
    for (std::size_t i = 0; i < m_targets.size() && !m_reading.HasFailed(); ++i) {
        m_graph.AddPart();
        const host::XmlNode target = m_targets[i];
        WriteTree(target, InheritsInPlace(m_reading.namespaces.TagOf(target)));
    }
    if (!m_targets.empty()) m_out += "</defs>";
    if (!m_reading.HasFailed()) CheckRepetition();
    return m_reading.HasFailed() ? std::string() : std::move(m_out);
}

bool ContentWriter::IsWritten(host::XmlNode element, host::XmlNode top) const {
    if (element == top) return true;
    const std::string_view name = m_reading.namespaces.LocalName(element.Name());
    if (name.empty()) return false;
    const Tag tag = FindTag(name);
    // Elements that the reader does not know are kept inside definitions, as a filter's steps are.
    return IsDrawn(tag) || tag == Tag::Stop || (tag == Tag::Unknown && m_graph.Size() > 1);
}

void ContentWriter::WriteTree(host::XmlNode top, bool withInherited) {
    host::XmlNode node = top;
    for (;;) {
        WriteStart(node, withInherited && node == top);
        if (m_reading.HasFailed()) return;
        host::XmlNode next = SkipToWritten(node.FirstChild(), top);
        while (!next) {
            m_out.append("</").append(m_reading.namespaces.LocalName(node.Name())) += '>';
            if (node == top) return;
            next = SkipToWritten(node.NextSibling(), top);
            if (!next) node = node.Parent();
        }
        node = next;
    }
}

host::XmlNode ContentWriter::SkipToWritten(host::XmlNode node, host::XmlNode top) {
    for (; node; node = node.NextSibling()) {
        if (node.IsElement() && IsWritten(node, top)) return node;
        const bool text = node.GetKind() == host::XmlNode::Kind::Text;
        if (text && IsTextContent(m_reading.namespaces.TagOf(node.Parent())))
            AppendEscaped(m_out, node.Value());
    }
    return {};
}

void ContentWriter::WriteStart(host::XmlNode element, bool withInherited) {
    Attributes attributes;
    if (withInherited) CollectInherited(element, attributes);
    CollectOwn(element, attributes);
    const auto number = m_numbers.find(element.Identity());
    if (number != m_numbers.end()) attributes["id"] = "r" + std::to_string(number->second);
    const std::size_t before = m_out.size();
    const std::string_view name = m_reading.namespaces.LocalName(element.Name());
    m_out.append("<").append(name);
    WriteAttributes(attributes);
    m_out += '>';
    if (IsTextContent(m_reading.namespaces.TagOf(element))) AppendEscaped(m_out, element.Value());
    m_graph.AddElement(m_out.size() - before, CountFilterSteps(attributes, name));
    m_reading.SpendContent(element, m_out.size() - before);
}

void ContentWriter::WriteAttributes(const Attributes& attributes) {
    for (const auto& [name, value] : attributes) {
        m_out.append(" ").append(name).append("=\"");
        AppendEscaped(m_out, value);
        m_out += '"';
    }
}

void ContentWriter::CollectInherited(host::XmlNode element, Attributes& attributes) {
    std::vector<host::XmlNode> ancestors;
    for (host::XmlNode at = element.Parent(); at.IsElement(); at = at.Parent())
        ancestors.push_back(at);
    for (; !ancestors.empty(); ancestors.pop_back()) {
        m_reading.budget.Spend(16);
        CollectDeclared(ancestors.back(), true, attributes);
    }
}

void ContentWriter::CollectDeclared(host::XmlNode element, bool inheritedOnly, Attributes& attributes) {
    const Tag tag = m_reading.namespaces.TagOf(element);
    const bool handsDown = inheritedOnly || !IsShape(tag) || IsTextContent(tag);
    m_reading.cascade.ForEachDeclaration(element, [&](const Property& property, std::string_view value) {
        if (inheritedOnly && (!property.inherited || EqualsNoCase(Trim(value), "inherit"))) return;
        attributes[std::string(property.name)] =
            RenameUrls(Trim(value), ReachOf(property, handsDown && property.inherited));
    });
}

void ContentWriter::CollectOwn(host::XmlNode element, Attributes& attributes) {
    const bool image = m_reading.namespaces.TagOf(element) == Tag::Image;
    for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
        const std::string_view name = at.Name();
        const std::string_view value = Trim(at.Value());
        if (name == "href" || name.ends_with(":href")) {
            attributes["href"] =
                image ? WithoutBlanks(value) : RenameReference(value, ContentGraph::Reach::Once);
        } else if (name == "xml:space") {
            attributes["xml:space"] = value;
        } else if (name != "id" && name != "class" && name != "style" && !name.starts_with("on") &&
                   name != "xmlns" && name.find(':') == std::string_view::npos) {
            const Property* property = FindProperty(name);
            if (property == nullptr || !property->attribute) attributes[std::string(name)] = value;
        }
    }
    CollectDeclared(element, false, attributes);
}

std::string ContentWriter::RenameUrls(std::string_view value, ContentGraph::Reach reach) {
    std::string result;
    for (;;) {
        const std::size_t at = value.find("url(");
        if (at == std::string_view::npos) return result.append(value);
        result.append(value.substr(0, at));
        Scanner in(value.substr(at));
        std::string_view url;
        ScanUrl(in, url);
        result.append("url(").append(RenameReference(url, reach)) += ')';
        value = in.Rest();
    }
}

std::string ContentWriter::RenameReference(std::string_view reference, ContentGraph::Reach reach) {
    if (!reference.starts_with('#')) return std::string(reference);
    const host::XmlNode target = m_reading.ids.FindReference(reference);
    if (!target || m_reading.namespaces.LocalName(target.Name()).empty()) {
        m_reading.omissions.Count("unresolved reference");
        return "#";
    }
    const auto [known, isNew] = m_numbers.emplace(target.Identity(), m_targets.size() + 1);
    if (isNew) m_targets.push_back(target);
    if (IsPaintServer(m_reading.namespaces.TagOf(target))) m_reading.MarkUsed(target);
    m_graph.AddReference(known->second, reach);
    return "#r" + std::to_string(known->second);
}

void ContentWriter::CheckRepetition() {
    const std::vector<std::size_t> order = m_graph.Order();
    if (order.size() < m_graph.Size()) {
        m_reading.Fail(m_owner, "pattern content refers back to itself");
        return;
    }
    const ContentGraph::Work work = m_graph.CountDrawn(order);
    m_filterSteps = work.filterSteps;
    if (work.elements > kMostDrawn)
        m_reading.Fail(m_owner, "pattern content repeats itself beyond 1000000 elements");
}

}  // namespace svg
