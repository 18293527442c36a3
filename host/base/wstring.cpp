#include "host/base/wstring.h"

#include <algorithm>
#include <utility>

#include "base/utf16.h"

namespace host {

using detail::ReadWide;
using detail::UnitsOf;
using detail::WideReader;

namespace {

/// The UTF-16 units of wide text, one after the other.
class UnitCursor {
public:
    explicit UnitCursor(std::wstring_view text) noexcept : m_text(text) {}

    bool AtEnd() const noexcept { return m_low == 0 && m_text.empty(); }
    char16_t Next() noexcept {
        if (m_low != 0) return std::exchange(m_low, u'\0');
        const auto c = static_cast<char32_t>(m_text.front());
        m_text.remove_prefix(1);
        if (c > detail::kLastCharacter) return static_cast<char16_t>(detail::kReplacement);
        if (c <= 0xFFFF) return static_cast<char16_t>(c);
        m_low = detail::LowSurrogate(c);
        return detail::HighSurrogate(c);
    }

private:
    std::wstring_view m_text;
    char16_t m_low = 0;
};

}  // namespace

std::size_t Utf16Length(std::wstring_view text) noexcept {
    if constexpr (sizeof(wchar_t) == 2) return text.size();
    std::size_t units = 0;
    for (WideReader reader = ReadWide(text); !reader.AtEnd();)
        units += UnitsOf(reader.Next());
    return units;
}

std::wstring_view CutUtf16(std::wstring_view text, std::size_t maxUnits) noexcept {
    std::size_t units = 0;
    WideReader reader = ReadWide(text);
    while (!reader.AtEnd()) {
        const wchar_t* before = reader.Position();
        units += UnitsOf(reader.Next());
        if (units > maxUnits) return text.substr(0, static_cast<std::size_t>(before - text.data()));
    }
    return text;
}

std::size_t PackUtf16(std::wstring_view text, std::span<char16_t> out) noexcept {
    std::size_t used = 0;
    for (WideReader reader = ReadWide(text); !reader.AtEnd();) {
        const char32_t c = reader.Next();
        if (UnitsOf(c) > out.size() - used) break;
        if (c > 0xFFFF) {
            out[used++] = detail::HighSurrogate(c);
            out[used++] = detail::LowSurrogate(c);
        } else {
            out[used++] = static_cast<char16_t>(c);
        }
    }
    std::fill(out.begin() + static_cast<std::ptrdiff_t>(used), out.end(), u'\0');
    return used;
}

std::wstring UnpackUtf16(std::span<const char16_t> units) {
    std::wstring text;
    for (detail::UnitReader reader(units.data(), units.size()); !reader.AtEnd();) {
        const char32_t c = reader.Next();
        if (c == 0) break;
        detail::AppendWide(text, detail::IsSurrogate(c) ? detail::kReplacement : c);
    }
    return text;
}

int CompareUnits(std::wstring_view a, std::wstring_view b) noexcept {
    const auto differs = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    UnitCursor left(a.substr(static_cast<std::size_t>(differs.first - a.begin())));
    UnitCursor right(b.substr(static_cast<std::size_t>(differs.second - b.begin())));
    while (!left.AtEnd() && !right.AtEnd()) {
        const char16_t leftUnit = left.Next();
        const char16_t rightUnit = right.Next();
        if (leftUnit != rightUnit) return leftUnit < rightUnit ? -1 : 1;
    }
    return static_cast<int>(right.AtEnd()) - static_cast<int>(left.AtEnd());
}

}  // namespace host
