#pragma once

#include <string_view>
#include <unordered_map>

#include "host/xml/xml_node.h"

#include "svg/namespaces.h"

namespace svg {

/// Elements of a document by id. Those of gradients and patterns are told to it; those of all elements are
/// gathered when first asked for, as little art needs them.
class IdIndex {
public:
    IdIndex(host::XmlNode root, const Namespaces& namespaces) : m_root(root), m_namespaces(namespaces) {}

    /// The first element of that id; null when there is none.
    host::XmlNode Find(std::string_view id);

    /// The element that "#id" leads to; null when it leads nowhere or outside the document.
    host::XmlNode FindReference(std::string_view reference);

    /// Adds a gradient or pattern; the first of an id holds.
    void AddDefinition(std::string_view id, host::XmlNode element) { m_definitions.emplace(id, element); }

    /// The gradient or pattern that "#id" leads to; null when it leads to none.
    host::XmlNode FindDefinition(std::string_view reference) const;

private:
    void Build();

    host::XmlNode m_root;
    const Namespaces& m_namespaces;
    std::unordered_map<std::string_view, host::XmlNode> m_elements;
    std::unordered_map<std::string_view, host::XmlNode> m_definitions;
    bool m_built = false;
};

}  // namespace svg
