#include "svg/scanner.h"

#include <charconv>
#include <system_error>

namespace svg {

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool EqualsNoCase(std::string_view text, std::string_view lower) {
    if (text.size() != lower.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (ToLower(text[i]) != lower[i]) return false;
    }
    return true;
}

bool Scanner::AcceptWord(std::string_view lower) {
    if (!EqualsNoCase(Rest().substr(0, lower.size()), lower)) return false;
    m_at += lower.size();
    return true;
}

bool Scanner::Number(double& value) {
    const char* start = m_at;
    if (start != m_end && *start == '+') ++start;
    const char* digits = start;
    if (digits != m_end && *digits == '-' && digits == m_at) ++digits;
    if (digits != m_end && *digits == '.') ++digits;
    // Without a digit here the conversion could only find "inf" or "nan".
    if (digits == m_end || !IsDigit(*digits)) return false;
    const auto [end, failure] = std::from_chars(start, m_end, value);
    if (failure != std::errc()) return false;
    m_at = end;
    return true;
}

std::string_view Scanner::Identifier() {
    const char* start = m_at;
    while (m_at != m_end && (IsLetter(*m_at) || IsDigit(*m_at) || *m_at == '-' || *m_at == '_'))
        ++m_at;
    return {start, static_cast<std::size_t>(m_at - start)};
}

std::string_view Scanner::Until(char c) {
    const char* start = m_at;
    while (m_at != m_end && *m_at != c)
        ++m_at;
    const std::string_view found(start, static_cast<std::size_t>(m_at - start));
    if (m_at != m_end) ++m_at;
    return found;
}

}  // namespace svg
