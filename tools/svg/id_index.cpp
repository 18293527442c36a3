#include "svg/id_index.h"

#include "svg/tree_walk.h"

namespace svg {

host::XmlNode IdIndex::Find(std::string_view id) {
    if (!m_built) Build();
    const auto found = m_elements.find(id);
    return found == m_elements.end() ? host::XmlNode() : found->second;
}

host::XmlNode IdIndex::FindReference(std::string_view reference) {
    if (reference.size() < 2 || reference.front() != '#') return {};
    return Find(reference.substr(1));
}

host::XmlNode IdIndex::FindDefinition(std::string_view reference) const {
    if (reference.size() < 2 || reference.front() != '#') return {};
    const auto found = m_definitions.find(reference.substr(1));
    return found == m_definitions.end() ? host::XmlNode() : found->second;
}

void IdIndex::Build() {
    m_built = true;
    WalkElements(m_root, [this](host::XmlNode element, unsigned) {
        for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
            if (at.Name() != "id") continue;
            if (!at.Empty()) m_elements.emplace(at.Value(), element);
            break;
        }
        return m_namespaces.TagOf(element) != Tag::Metadata;
    });
}

}  // namespace svg
