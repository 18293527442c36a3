#pragma once

#include <cstddef>
#include <string_view>

#include "host/base/export.h"

namespace host {

/// One attribute of an element: a pointer-sized value that points into its XmlDocument and is good for as
/// long as that document is. Text is UTF-8 with entity and character references resolved.
class FOM_API XmlAttribute {
public:
    XmlAttribute() noexcept = default;

    explicit operator bool() const noexcept { return m_data != nullptr; }

    /// Qualified name ("xlink:href").
    std::string_view Name() const noexcept;
    std::string_view Value() const noexcept;
    /// Whether the value is empty, without measuring it.
    bool Empty() const noexcept;
    XmlAttribute Next() const noexcept;

private:
    friend class XmlNode;
    explicit XmlAttribute(void* data) noexcept : m_data(data) {}

    void* m_data = nullptr;
};

/// One node of a document: a pointer-sized value that points into its XmlDocument and is good for as long as
/// that document is. A null node answers every question with an empty value, so that steps can be chained.
/// Comments, the XML declaration and the document type do not appear in the tree.
class FOM_API XmlNode {
public:
    enum class Kind : unsigned char { None, Document, Element, Text, Instruction };

    XmlNode() noexcept = default;

    explicit operator bool() const noexcept { return m_data != nullptr; }
    bool operator==(const XmlNode& other) const noexcept = default;

    Kind GetKind() const noexcept;
    bool IsElement() const noexcept { return GetKind() == Kind::Element; }

    /// Qualified name of an element, target of an instruction, else empty.
    std::string_view Name() const noexcept;
    /// Characters of a Text node, content of an instruction, and of an element the character data that
    /// directly follows its start tag (which is not among its children). Blank text is not kept.
    std::string_view Value() const noexcept;

    XmlNode Parent() const noexcept;
    XmlNode FirstChild() const noexcept;
    XmlNode NextSibling() const noexcept;
    /// First child, or next sibling, that is an element.
    XmlNode FirstElement() const noexcept;
    XmlNode NextElement() const noexcept;

    XmlAttribute FirstAttribute() const noexcept;
    /// The attribute of that qualified name, or a null one.
    XmlAttribute Attribute(std::string_view name) const noexcept;

    /// Byte offset of the node's first character in the document text; XmlDocument::LineOf makes a line of
    /// it.
    std::size_t Offset() const noexcept;

    /// Stands for the node in maps and sets: distinct for distinct nodes of a document.
    const void* Identity() const noexcept { return m_data; }

private:
    friend class XmlDocument;
    explicit XmlNode(void* data) noexcept : m_data(data) {}

    void* m_data = nullptr;
};

}  // namespace host
