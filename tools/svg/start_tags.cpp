#include "svg/start_tags.h"

#include <algorithm>

#include "svg/scanner.h"

namespace svg {
namespace {

void Note(std::string_view name, const TagAttribute& attribute, StartTag& tag) {
    if (name == "style") {
        tag.style = attribute;
    } else if (name == "id") {
        tag.id = attribute;
    } else if (name == "href") {
        tag.href = attribute;
    } else if (name.ends_with(":href") && !tag.prefixedHref && attribute.end > attribute.value) {
        tag.prefixedHref = attribute;
    }
}

}  // namespace

std::optional<StartTag> StartTagReader::Next() {
    for (;;) {
        const Mark mark = FindMark();
        if (mark == Mark::Start) break;
        if (mark == Mark::None || !PassEndTag()) return std::nullopt;
    }
    StartTag tag;
    tag.start = m_at;
    const std::size_t start = m_at + 1;
    m_at = std::min(m_text.find_first_of(" \t\r\n/>", start), m_text.size());
    tag.name = m_text.substr(start, m_at - start);
    tag.nameEnd = m_at;
    if (!ReadAttributes(tag)) return std::nullopt;
    if (!tag.isEmpty) ++m_open;
    return tag;
}

std::optional<std::size_t> StartTagReader::Leave(std::size_t depth) {
    while (m_open > depth) {
        const Mark mark = FindMark();
        if (mark == Mark::None) return std::nullopt;
        if (mark == Mark::End ? !PassEndTag() : !Next()) return std::nullopt;
    }
    return m_at;
}

/// Goes to the next tag.
StartTagReader::Mark StartTagReader::FindMark() {
    for (;;) {
        m_at = m_text.find('<', m_at);
        if (m_at == std::string_view::npos) m_at = m_text.size();
        const std::string_view rest = m_text.substr(m_at, 9);
        bool good = true;
        if (rest.starts_with("<!--")) {
            m_at += 4;
            good = SkipPast("-->");
        } else if (rest == "<![CDATA[") {
            good = SkipPast("]]>");
        } else if (rest.starts_with("<?")) {
            good = SkipPast("?>");
        } else if (rest.starts_with("<!")) {
            m_at += 2;
            SkipDocumentType();
        } else if (rest.empty()) {
            return Mark::None;
        } else {
            return rest.starts_with("</") ? Mark::End : Mark::Start;
        }
        if (!good) return Mark::None;
    }
}

bool StartTagReader::PassEndTag() {
    if (m_open > 0) --m_open;
    return SkipPast(">");
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
        const std::size_t begin = m_at;
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
        Note(name, {begin, value, end}, tag);
        m_at = end + 1;
    }
}

}  // namespace svg
