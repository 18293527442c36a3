#include "svg/start_tags.h"

#include <algorithm>

#include "svg/scanner.h"

namespace svg {

std::optional<StartTag> StartTagReader::Next() {
    for (;;) {
        m_at = m_text.find('<', m_at);
        if (m_at == std::string_view::npos) return std::nullopt;
        const std::string_view rest = m_text.substr(m_at, 9);
        if (rest.starts_with("<!--")) {
            m_at += 4;
            if (!SkipPast("-->")) return std::nullopt;
        } else if (rest == "<![CDATA[") {
            if (!SkipPast("]]>")) return std::nullopt;
        } else if (rest.starts_with("<?")) {
            if (!SkipPast("?>")) return std::nullopt;
        } else if (rest.starts_with("<!")) {
            m_at += 2;
            SkipDocumentType();
        } else if (rest.starts_with("</")) {
            if (!SkipPast(">")) return std::nullopt;
        } else {
            break;
        }
    }
    StartTag tag;
    const std::size_t start = m_at + 1;
    m_at = std::min(m_text.find_first_of(" \t\r\n/>", start), m_text.size());
    tag.name = m_text.substr(start, m_at - start);
    tag.nameEnd = m_at;
    if (!ReadAttributes(tag)) return std::nullopt;
    return tag;
}

bool StartTagReader::SkipPast(std::string_view mark) {
    const std::size_t found = m_text.find(mark, m_at);
    m_at = found == std::string_view::npos ? m_text.size() : found + mark.size();
    return found != std::string_view::npos;
}

/// Declarations in it nest, and what looks like markup may stand in quotes and comments.
void StartTagReader::SkipDocumentType() {
    std::size_t depth = 1;
    while (depth > 0 && m_at < m_text.size()) {
        const std::string_view rest = m_text.substr(m_at);
        const char c = rest.front();
        if (rest.starts_with("<!--")) {
            SkipPast("-->");
        } else if (rest.starts_with("<?")) {
            SkipPast("?>");
        } else if (c == '"' || c == '\'') {
            ++m_at;
            SkipPast(rest.substr(0, 1));
        } else {
            if (c == '<') ++depth;
            if (c == '>') --depth;
            ++m_at;
        }
    }
}

void StartTagReader::SkipSpace() {
    while (m_at < m_text.size() && IsSpace(m_text[m_at]))
        ++m_at;
}

bool StartTagReader::ReadAttributes(StartTag& tag) {
    for (;;) {
        SkipSpace();
        tag.isEmpty = Peek() == '/';
        if (tag.isEmpty) ++m_at;
        if (Peek() == '>') {
            tag.end = ++m_at;
            return true;
        }
        const std::size_t start = m_at;
        m_at = std::min(m_text.find_first_of(" \t\r\n=/>", start), m_text.size());
        const std::string_view name = m_text.substr(start, m_at - start);
        SkipSpace();
        if (Peek() != '=') return false;
        ++m_at;
        SkipSpace();
        const char quote = Peek();
        if (quote != '"' && quote != '\'') return false;
        const std::size_t value = ++m_at;
        const std::size_t end = m_text.find(quote, value);
        if (end == std::string_view::npos) return false;
        if (name == "style") tag.style = value, tag.styleEnd = end;
        m_at = end + 1;
    }
}

}  // namespace svg
