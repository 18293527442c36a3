#include "svg/definition.h"

#include <vector>

#include "svg/name_table.h"

namespace svg {
namespace {

constexpr NameTable kFields(std::to_array<std::string_view>({"x1",
                                                             "y1",
                                                             "x2",
                                                             "y2",
                                                             "cx",
                                                             "cy",
                                                             "r",
                                                             "fx",
                                                             "fy",
                                                             "fr",
                                                             "gradientUnits",
                                                             "gradientTransform",
                                                             "spreadMethod",
                                                             "x",
                                                             "y",
                                                             "width",
                                                             "height",
                                                             "patternUnits",
                                                             "patternContentUnits",
                                                             "patternTransform",
                                                             "viewBox",
                                                             "preserveAspectRatio"}));

bool HasContent(host::XmlNode element, const Namespaces& namespaces) {
    const bool pattern = namespaces.TagOf(element) == Tag::Pattern;
    for (host::XmlNode child = element.FirstElement(); child; child = child.NextElement()) {
        const Tag tag = namespaces.TagOf(child);
        if (pattern ? IsDrawn(tag) : tag == Tag::Stop) return true;
    }
    return false;
}

}  // namespace

void Definition::Overlay(host::XmlNode element, const Namespaces& namespaces) {
    for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
        const std::size_t index = kFields.Find(at.Name());
        if (index != kFields.kMissing) m_fields[index] = at.Value();
    }
    if (HasContent(element, namespaces)) contentOwner = element;
}

host::XmlNode DefinitionReader::TemplateOf(host::XmlNode element) {
    const std::string_view href = HrefOf(element);
    if (href.empty()) return {};
    const host::XmlNode target = m_reading.ids.FindDefinition(href);
    const Tag tag = m_reading.namespaces.TagOf(target);
    const bool wantsPattern = m_reading.namespaces.TagOf(element) == Tag::Pattern;
    if (target && (tag == Tag::Pattern) == wantsPattern) return target;
    m_reading.omissions.Count("unresolved reference");
    return {};
}

Definition DefinitionReader::Read(host::XmlNode element) {
    std::vector<host::XmlNode> chain;
    Definition result;
    for (host::XmlNode at = element; at; at = TemplateOf(at)) {
        if (const auto known = m_templates.find(at.Identity()); known != m_templates.end()) {
            result = known->second;
            break;
        }
        m_reading.MarkUsed(at);
        chain.push_back(at);
    }
    for (; !chain.empty(); chain.pop_back()) {
        result.Overlay(chain.back(), m_reading.namespaces);
        if (chain.size() > 1) m_templates.emplace(chain.back().Identity(), result);
    }
    return result;
}

}  // namespace svg
