#include "host/xml/xml_node.h"

#include <pugixml.hpp>

namespace host {
namespace {

pugi::xml_node Node(void* data) {
    return pugi::xml_node(static_cast<pugi::xml_node_struct*>(data));
}

pugi::xml_attribute Attr(void* data) {
    return pugi::xml_attribute(static_cast<pugi::xml_attribute_struct*>(data));
}

bool IsKept(pugi::xml_node_type type) {
    return type == pugi::node_element || type == pugi::node_pcdata || type == pugi::node_cdata ||
           type == pugi::node_pi;
}

void* SkipHidden(pugi::xml_node node) {
    while (node && !IsKept(node.type()))
        node = node.next_sibling();
    return node.internal_object();
}

void* SkipToElement(pugi::xml_node node) {
    while (node && node.type() != pugi::node_element)
        node = node.next_sibling();
    return node.internal_object();
}

}  // namespace

std::string_view XmlAttribute::Name() const noexcept {
    return Attr(m_data).name();
}

std::string_view XmlAttribute::Value() const noexcept {
    return Attr(m_data).value();
}

bool XmlAttribute::Empty() const noexcept {
    return *Attr(m_data).value() == '\0';
}

XmlAttribute XmlAttribute::Next() const noexcept {
    return XmlAttribute(Attr(m_data).next_attribute().internal_object());
}

XmlNode::Kind XmlNode::GetKind() const noexcept {
    switch (Node(m_data).type()) {
        case pugi::node_document:
            return Kind::Document;
        case pugi::node_element:
            return Kind::Element;
        case pugi::node_pcdata:
        case pugi::node_cdata:
            return Kind::Text;
        case pugi::node_pi:
            return Kind::Instruction;
        default:
            return Kind::None;
    }
}

std::string_view XmlNode::Name() const noexcept {
    return Node(m_data).name();
}

std::string_view XmlNode::Value() const noexcept {
    return Node(m_data).value();
}

XmlNode XmlNode::Parent() const noexcept {
    return XmlNode(Node(m_data).parent().internal_object());
}

XmlNode XmlNode::FirstChild() const noexcept {
    return XmlNode(SkipHidden(Node(m_data).first_child()));
}

XmlNode XmlNode::NextSibling() const noexcept {
    return XmlNode(SkipHidden(Node(m_data).next_sibling()));
}

XmlNode XmlNode::FirstElement() const noexcept {
    return XmlNode(SkipToElement(Node(m_data).first_child()));
}

XmlNode XmlNode::NextElement() const noexcept {
    return XmlNode(SkipToElement(Node(m_data).next_sibling()));
}

XmlAttribute XmlNode::FirstAttribute() const noexcept {
    return XmlAttribute(Node(m_data).first_attribute().internal_object());
}

XmlAttribute XmlNode::Attribute(std::string_view name) const noexcept {
    for (pugi::xml_attribute at = Node(m_data).first_attribute(); at; at = at.next_attribute()) {
        if (name == at.name()) return XmlAttribute(at.internal_object());
    }
    return {};
}

std::size_t XmlNode::Offset() const noexcept {
    const std::ptrdiff_t offset = Node(m_data).offset_debug();
    if (offset <= 0) return 0;
    // The parser answers with the place of the name, behind the bracket.
    return static_cast<std::size_t>(offset) - (IsElement() ? 1U : 0U);
}

}  // namespace host
