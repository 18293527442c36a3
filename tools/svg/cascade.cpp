#include "svg/cascade.h"

#include <array>

#include "svg/declarations.h"
#include "svg/name_table.h"
#include "svg/scanner.h"

namespace svg {
namespace {

enum class Fact {
    Id,
    Class,
    Style,
    Transform,
    Href,
    Data,
    Points,
    RequiredExtensions,
    SystemLanguage,
    Xmlns
};

constexpr NameTable kFacts(std::to_array<std::string_view>({"id", "class", "style", "transform", "href", "d",
                                                            "points", "requiredExtensions", "systemLanguage",
                                                            "xmlns"}));

void TakeFact(Fact fact, host::XmlAttribute attribute, ElementFacts& facts) {
    switch (fact) {
        case Fact::Id:
            facts.id = attribute.Value();
            break;
        case Fact::Class:
            facts.classes = attribute.Value();
            break;
        case Fact::Style:
            facts.style = attribute.Value();
            break;
        case Fact::Transform:
            facts.transform = attribute.Value();
            break;
        case Fact::Href:
            facts.href = Trim(attribute.Value());
            break;
        case Fact::Data:
        case Fact::Points:
            facts.data = attribute;
            break;
        case Fact::RequiredExtensions:
            facts.requiredExtensions = attribute;
            break;
        case Fact::SystemLanguage:
            facts.systemLanguage = attribute;
            break;
        case Fact::Xmlns:
            facts.foreignDefault = Trim(attribute.Value()) != Namespaces::kSvgUri;
            break;
    }
}

}  // namespace

template <class Visit>
void Cascade::EnumerateStyle(std::string_view style, Visit&& visit) {
    m_budget.Spend(style.size() / 8);
    DeclarationReader reader(style);
    while (const auto raw = reader.Next()) {
        const Property* property = FindProperty(raw->name);
        if (property == nullptr) {
            if (!raw->name.starts_with('-')) m_omissions.Count("unknown property");
        } else if (raw->important) {
            m_important.emplace_back(property, raw->value);
        } else {
            visit(*property, raw->value);
        }
    }
    m_omissions.Count("malformed style", reader.Malformed());
}

template <class Visit>
void Cascade::Enumerate(host::XmlNode element, ElementFacts& facts, Visit&& visit) {
    for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
        const std::string_view name = at.Name();
        if (const std::size_t index = kFacts.Find(name); index != kFacts.kMissing) {
            TakeFact(static_cast<Fact>(index), at, facts);
        } else if (const Property* property = FindProperty(name)) {
            if (property->attribute) visit(*property, at.Value());
        } else if (name.ends_with(":href") && facts.href.empty()) {
            facts.href = Trim(at.Value());
        }
    }
    m_important.clear();
    if (!m_sheet.Empty()) {
        const std::string_view type = m_namespaces.LocalName(element.Name());
        m_sheet.Match({type, facts.id, facts.classes}, m_matched, m_budget);
        for (const StyleSheet::Rule* rule : m_matched) {
            for (const Declaration* at = m_sheet.begin(*rule); at != m_sheet.end(*rule); ++at) {
                if (at->important) {
                    m_important.emplace_back(at->property, at->value);
                } else {
                    visit(*at->property, at->value);
                }
            }
        }
    }
    if (!facts.style.empty()) EnumerateStyle(facts.style, visit);
    for (const auto& [property, value] : m_important)
        visit(*property, value);
}

void Cascade::Compute(host::XmlNode element, const Style& parent, Style& style, ElementFacts& facts) {
    static_cast<InheritedStyle&>(style) = parent;
    static_cast<OwnStyle&>(style) = OwnStyle();
    m_budget.Spend(1);
    Enumerate(element, facts, [&](const Property& property, std::string_view value) {
        ApplyProperty(property, value, parent, style, m_omissions);
    });
}

Style Cascade::ComputeFromRoot(host::XmlNode element) {
    std::vector<host::XmlNode> path;
    for (host::XmlNode at = element.Parent(); at.IsElement(); at = at.Parent()) {
        if (at == m_recentParent) break;
        path.push_back(at);
    }
    const bool continues =
        !path.empty() ? path.back().Parent() == m_recentParent : element.Parent() == m_recentParent;
    Style style = continues && m_recentParent ? m_recentStyle : Style();
    while (!path.empty()) {
        const Style parent = style;
        ElementFacts facts;
        Compute(path.back(), parent, style, facts);
        path.pop_back();
    }
    m_recentParent = element.Parent();
    m_recentStyle = style;
    const Style parent = style;
    ElementFacts facts;
    Compute(element, parent, style, facts);
    return style;
}

void Cascade::ForEachDeclaration(host::XmlNode element, const Visitor& visit) {
    ElementFacts facts;
    Enumerate(element, facts, visit);
}

}  // namespace svg
