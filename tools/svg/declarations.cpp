#include "svg/declarations.h"

#include <algorithm>
#include <array>

#include "svg/scanner.h"

namespace svg {
namespace {

/// Skips blanks and comments.
std::string_view SkipFiller(std::string_view text) {
    for (;;) {
        while (!text.empty() && IsSpace(text.front()))
            text.remove_prefix(1);
        if (!text.starts_with("/*")) return text;
        const std::size_t end = text.find("*/", 2);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 2);
    }
}

/// Whether a character can end a piece or hide an end of it.
constexpr auto kSpecial = [] {
    std::array<bool, 256> special{};
    for (const char c : {';', '"', '\'', '(', ')'})
        special[static_cast<unsigned char>(c)] = true;
    return special;
}();

std::size_t NextSpecial(std::string_view text, std::size_t at) {
    while (at < text.size() && !kSpecial[static_cast<unsigned char>(text[at])])
        ++at;
    return at;
}

/// Length of the piece before the next semicolon that stands outside quotes and brackets; nothing when one of
/// those is never closed.
std::optional<std::size_t> BalancedLength(std::string_view text) {
    std::size_t depth = 0;
    for (std::size_t i = NextSpecial(text, 0); i < text.size(); i = NextSpecial(text, i + 1)) {
        const char c = text[i];
        if (c == ';') {
            if (depth == 0) return i;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')') {
            depth -= depth > 0 ? 1U : 0U;
        } else {
            i = text.find(c, i + 1);
            if (i == std::string_view::npos) return std::nullopt;
        }
    }
    if (depth != 0) return std::nullopt;
    return text.size();
}

std::string_view WithoutTrailingComment(std::string_view value) {
    const std::size_t at =
        value.find('/') == std::string_view::npos ? std::string_view::npos : value.find("/*");
    return at == std::string_view::npos ? value : Trim(value.substr(0, at));
}

}  // namespace

std::optional<RawDeclaration> DeclarationReader::Next() {
    while (!(m_rest = SkipFiller(m_rest)).empty()) {
        std::optional<std::size_t> balanced;
        if (!m_unbalanced) balanced = BalancedLength(m_rest);
        // From an unclosed quote or bracket on every semicolon counts, so that it does not swallow the rest.
        m_unbalanced = !balanced.has_value();
        const std::size_t length = balanced ? *balanced : std::min(m_rest.find(';'), m_rest.size());
        const std::string_view piece = m_rest.substr(0, length);
        m_rest.remove_prefix(std::min(length + 1, m_rest.size()));
        if (Trim(piece).empty()) continue;
        const std::size_t colon = piece.find(':');
        if (colon == std::string_view::npos) {
            ++m_malformed;
            continue;
        }
        RawDeclaration result{Trim(piece.substr(0, colon)),
                              WithoutTrailingComment(Trim(piece.substr(colon + 1)))};
        const std::size_t mark = result.value.rfind('!');
        if (mark != std::string_view::npos &&
            EqualsNoCase(Trim(result.value.substr(mark + 1)), "important")) {
            result.value = Trim(result.value.substr(0, mark));
            result.important = true;
        }
        return result;
    }
    return std::nullopt;
}

}  // namespace svg
