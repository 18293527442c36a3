#pragma once

#include <string_view>

namespace svg {

constexpr bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

constexpr char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool IsLetter(char c) {
    return ToLower(c) >= 'a' && ToLower(c) <= 'z';
}

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view Trim(std::string_view text);

/// Compares ASCII letters without regard to case; `lower` is in lower case.
bool EqualsNoCase(std::string_view text, std::string_view lower);

/// Reads SVG's small value syntaxes from left to right. Locale-free, never allocates.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_at(text.data()), m_end(text.data() + text.size()) {}

    bool AtEnd() const { return m_at == m_end; }
    char Peek() const { return m_at == m_end ? '\0' : *m_at; }
    char Take() { return *m_at++; }
    std::string_view Rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }

    void SkipSpace() {
        while (m_at != m_end && IsSpace(*m_at))
            ++m_at;
    }
    /// Skips blanks with at most one comma among them.
    void SkipSeparator() {
        SkipSpace();
        if (Accept(',')) SkipSpace();
    }
    bool Accept(char c) {
        if (m_at == m_end || *m_at != c) return false;
        ++m_at;
        return true;
    }
    /// Accepts a word without regard to case; `lower` is in lower case.
    bool AcceptWord(std::string_view lower);
    /// A finite number with optional sign, fraction and exponent. Leaves the place as it was when there is
    /// none.
    bool Number(double& value);
    /// Letters, digits, '-' and '_', possibly none.
    std::string_view Identifier();
    /// Everything up to `c`, which is skipped too; the rest when there is none.
    std::string_view Until(char c);

private:
    const char* m_at;
    const char* m_end;
};

}  // namespace svg
