#pragma once

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "host/xml/xml_node.h"

#include "svg/budget.h"
#include "svg/namespaces.h"
#include "svg/omissions.h"
#include "svg/style.h"
#include "svg/style_sheet.h"

namespace svg {

/// Attributes of an element that are not properties but are looked at while it is walked over.
struct ElementFacts {
    std::string_view id;
    std::string_view classes;
    std::string_view style;
    std::string_view transform;
    std::string_view href;
    /// "d" of a path, "points" of a polyline or polygon.
    host::XmlAttribute data;
    /// Null when the element sets no such condition.
    host::XmlAttribute requiredExtensions;
    host::XmlAttribute systemLanguage;
    /// The element moves its unprefixed names out of SVG.
    bool foreignDefault = false;
};

/// Computes styles: attributes, then the style sheet, then the element's own style, then what is important.
class Cascade {
public:
    Cascade(const Namespaces& namespaces, const StyleSheet& sheet, Omissions& omissions, Budget& budget)
        : m_namespaces(namespaces), m_sheet(sheet), m_omissions(omissions), m_budget(budget) {}

    /// The style of `element` below a parent of style `parent`.
    void Compute(host::XmlNode element, const Style& parent, Style& style, ElementFacts& facts);

    /// The style of an element from all its ancestors in the document.
    Style ComputeFromRoot(host::XmlNode element);

    /// Calls `visit(property, value)` for each declaration of the element, weakest first; the last one holds.
    using Visitor = std::function<void(const Property&, std::string_view)>;
    void ForEachDeclaration(host::XmlNode element, const Visitor& visit);

private:
    template <class Visit>
    void Enumerate(host::XmlNode element, ElementFacts& facts, Visit&& visit);
    template <class Visit>
    void EnumerateStyle(std::string_view style, Visit&& visit);

    const Namespaces& m_namespaces;
    const StyleSheet& m_sheet;
    Omissions& m_omissions;
    Budget& m_budget;
    std::vector<const StyleSheet::Rule*> m_matched;
    std::vector<std::pair<const Property*, std::string_view>> m_important;
    // Paint definitions stand side by side: the style around them is worth keeping.
    host::XmlNode m_recentParent;
    Style m_recentStyle;
};

}  // namespace svg
