#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace host::detail {

inline constexpr char32_t kReplacement = 0xFFFD;
inline constexpr char32_t kLastCharacter = 0x10FFFF;

constexpr bool IsSurrogate(char32_t c) noexcept {
    return c >= 0xD800 && c <= 0xDFFF;
}
constexpr bool IsHighSurrogate(char32_t c) noexcept {
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t c) noexcept {
    return c >= 0xDC00 && c <= 0xDFFF;
}
constexpr char32_t JoinSurrogates(char32_t high, char32_t low) noexcept {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}
constexpr char16_t HighSurrogate(char32_t c) noexcept {
    return static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
}
constexpr char16_t LowSurrogate(char32_t c) noexcept {
    return static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
}
/// UTF-16 units of one character; a lone surrogate is one unit.
constexpr std::size_t UnitsOf(char32_t c) noexcept {
    return c > 0xFFFF ? 2 : 1;
}

/// Walks text as characters: pairs are joined, whatever holds them, and a lone surrogate stands for itself.
template <class Unit>
class CharacterReader {
public:
    explicit constexpr CharacterReader(const Unit* text, std::size_t size) noexcept
        : m_at(text), m_end(text + size) {}

    constexpr bool AtEnd() const noexcept { return m_at == m_end; }
    constexpr const Unit* Position() const noexcept { return m_at; }
    /// Requires that the end has not been reached.
    constexpr char32_t Next() noexcept {
        const auto c = static_cast<char32_t>(*m_at++);
        if (IsHighSurrogate(c) && m_at != m_end && IsLowSurrogate(static_cast<char32_t>(*m_at)))
            return JoinSurrogates(c, static_cast<char32_t>(*m_at++));
        return c > kLastCharacter ? kReplacement : c;
    }

private:
    const Unit* m_at;
    const Unit* m_end;
};

using WideReader = CharacterReader<wchar_t>;
using UnitReader = CharacterReader<char16_t>;

/// Appends a character that is not a surrogate, as a pair where `wchar_t` takes no more.
inline void AppendWide(std::wstring& out, char32_t c) {
    if (sizeof(wchar_t) == 2 && c > 0xFFFF) {
        out.push_back(static_cast<wchar_t>(HighSurrogate(c)));
        out.push_back(static_cast<wchar_t>(LowSurrogate(c)));
    } else {
        out.push_back(static_cast<wchar_t>(c));
    }
}

inline WideReader ReadWide(std::wstring_view text) noexcept {
    return WideReader(text.data(), text.size());
}

}  // namespace host::detail
