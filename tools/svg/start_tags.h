#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace svg {

/// An attribute in a start tag; places are counted from the text's beginning.
struct TagAttribute {
    /// Behind what stands before the attribute: blanks between are its own.
    std::size_t begin = 0;
    /// Within the quotes.
    std::size_t value = 0;
    std::size_t end = 0;

    /// Whether the tag has it.
    explicit operator bool() const { return value > 0; }
};

/// A start tag, or the tag of an empty element, as it stands in a text.
struct StartTag {
    std::string_view name;
    std::size_t start = 0;
    /// Behind the name: where an attribute can be added.
    std::size_t nameEnd = 0;
    /// Behind the tag.
    std::size_t end = 0;
    TagAttribute id, style;
    /// "href", and the first that has the name with a prefix and is not empty.
    TagAttribute href, prefixedHref;
    bool isEmpty = false;
};

/// Goes through the start tags of a well-formed XML text in their order, which is that of the elements in the
/// document's tree. Comments, instructions, the document type and character data sections are passed over.
class StartTagReader {
public:
    /// Begins at the unit `start`, where no tag has begun.
    explicit StartTagReader(std::string_view text, std::size_t start = 0) : m_text(text), m_at(start) {}

    /// The next one; nothing at the end, and where the text breaks off.
    std::optional<StartTag> Next();

    /// Passes over what follows until only `depth` of the elements that began here are open, and answers the
    /// place behind; nothing where the text breaks off.
    std::optional<std::size_t> Leave(std::size_t depth);

private:
    enum class Mark { None, Start, End };

    Mark FindMark();
    bool PassEndTag();
    bool SkipPast(std::string_view mark);
    void SkipDocumentType();
    bool ReadAttributes(StartTag& tag);
    void SkipSpace();
    char Peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_open = 0;
};

}  // namespace svg
