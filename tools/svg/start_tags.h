#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace svg {

/// A start tag, or the tag of an empty element, as it stands in a text. Places are counted from the text's
/// beginning.
struct StartTag {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    std::string_view name;
    /// Behind the name: where an attribute can be added.
    std::size_t nameEnd = 0;
    /// Behind the tag.
    std::size_t end = 0;
    /// The value of the attribute "style", within its quotes: kNone for a tag without it.
    std::size_t style = kNone;
    std::size_t styleEnd = kNone;
    bool isEmpty = false;
};

/// Goes through the start tags of a well-formed XML text in their order, which is that of the elements in the
/// document's tree. Comments, instructions, the document type and character data sections are passed over.
class StartTagReader {
public:
    explicit StartTagReader(std::string_view text) : m_text(text) {}

    /// The next one; nothing at the end, and where the text breaks off.
    std::optional<StartTag> Next();

private:
    bool SkipPast(std::string_view mark);
    void SkipDocumentType();
    bool ReadAttributes(StartTag& tag);
    void SkipSpace();
    char Peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace svg
