#include "svg/namespaces.h"

#include <algorithm>

#include "svg/scanner.h"

namespace svg {

Namespaces::Namespaces(host::XmlNode root) {
    bool declared = false;
    bool defaultIsSvg = false;
    for (host::XmlAttribute at = root.FirstAttribute(); at; at = at.Next()) {
        const std::string_view name = at.Name();
        if (!name.starts_with("xmlns")) continue;
        const bool isSvg = Trim(at.Value()) == kSvgUri;
        if (name == "xmlns") {
            declared = true;
            defaultIsSvg = isSvg;
        } else if (isSvg && name.size() > 6 && name[5] == ':') {
            m_prefixes.push_back(name.substr(6));
        }
    }
    const bool prefixedRoot = root.Name().find(':') != std::string_view::npos;
    m_defaultIsSvg = declared ? defaultIsSvg : !prefixedRoot;
}

std::string_view Namespaces::LocalName(std::string_view name) const {
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos) return m_defaultIsSvg ? name : std::string_view();
    const bool known =
        std::find(m_prefixes.begin(), m_prefixes.end(), name.substr(0, colon)) != m_prefixes.end();
    return known ? name.substr(colon + 1) : std::string_view();
}

bool DeclaresForeignDefault(host::XmlNode element) {
    const host::XmlAttribute at = element.Attribute("xmlns");
    return at && Trim(at.Value()) != Namespaces::kSvgUri;
}

References ReferencesOf(host::XmlNode element) {
    References found;
    bool plain = false;
    for (host::XmlAttribute at = element.FirstAttribute(); at; at = at.Next()) {
        const std::string_view name = at.Name();
        if (name == "id") {
            found.id = at.Value();
        } else if (name == "href" || (!plain && name.ends_with(":href"))) {
            found.href = Trim(at.Value());
            plain = name == "href";
        }
    }
    return found;
}

}  // namespace svg
