#pragma once

#include <string_view>
#include <vector>

#include "host/xml/xml_node.h"

#include "svg/tags.h"

namespace svg {

/// Tells which elements belong to SVG, by what the root element declares. Art without any declaration is
/// taken for SVG.
class Namespaces {
public:
    static constexpr std::string_view kSvgUri = "http://www.w3.org/2000/svg";

    Namespaces() = default;
    explicit Namespaces(host::XmlNode root);

    /// The tag of an element; Unknown for elements of other languages.
    Tag TagOf(host::XmlNode element) const { return FindTag(LocalName(element.Name())); }

    /// Name without its prefix; empty for an element of another language.
    std::string_view LocalName(std::string_view name) const;

private:
    std::vector<std::string_view> m_prefixes;
    bool m_defaultIsSvg = true;
};

/// Whether the element itself moves its unprefixed names out of SVG.
bool DeclaresForeignDefault(host::XmlNode element);

/// What an element is known by and what it refers to, "href" under any prefix; empty when it says nothing.
struct References {
    std::string_view id;
    std::string_view href;
};

References ReferencesOf(host::XmlNode element);

inline std::string_view HrefOf(host::XmlNode element) {
    return ReferencesOf(element).href;
}

}  // namespace svg
