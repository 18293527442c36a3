#include "services/preference_escape.h"

#include <cstdint>
#include <cstdio>
#include <optional>

#include "host/base/wstring.h"

namespace host {
namespace {

constexpr std::wstring_view kNameSyntax = L"=[];#";

using Unit = std::uint32_t;

Unit UnitOf(wchar_t c) noexcept {
    if constexpr (sizeof(wchar_t) == 2)
        return static_cast<std::uint16_t>(c);
    else
        return static_cast<Unit>(c);
}

bool IsHighSurrogate(Unit unit) noexcept {
    return (unit & 0xFFFFFC00u) == 0xD800u;
}
bool IsLowSurrogate(Unit unit) noexcept {
    return (unit & 0xFFFFFC00u) == 0xDC00u;
}

/// Whether UTF-8 can carry the unit at `at`: surrogates only where they are two bytes wide and in pairs.
bool IsText(std::wstring_view text, std::size_t at) noexcept {
    const Unit unit = UnitOf(text[at]);
    if (unit > 0x10FFFFu) return false;
    if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) return true;
    if constexpr (sizeof(wchar_t) != 2) return false;
    if (IsHighSurrogate(unit)) return at + 1 < text.size() && IsLowSurrogate(UnitOf(text[at + 1]));
    return at > 0 && IsHighSurrogate(UnitOf(text[at - 1]));
}

void AppendNumber(std::wstring& out, Unit unit) {
    char digits[16];
    const int length = std::snprintf(digits, sizeof digits, "\\x%X;", static_cast<unsigned>(unit));
    out.append(digits, digits + length);
}

std::string Escape(std::wstring_view text, std::wstring_view syntax) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        const bool atEnd = i == 0 || i + 1 == text.size();
        if (c == L'\\')
            out += L"\\\\";
        else if (c == L'\n')
            out += L"\\n";
        else if (c == L'\r')
            out += L"\\r";
        else if (c == L'\t')
            out += L"\\t";
        else if (UnitOf(c) < 0x20u || (c == L' ' && atEnd) || syntax.find(c) != std::wstring_view::npos ||
                 !IsText(text, i))
            AppendNumber(out, UnitOf(c));
        else
            out += c;
    }
    return ToUtf8(out);
}

int DigitOf(wchar_t c) noexcept {
    if (c >= L'0' && c <= L'9') return static_cast<int>(c - L'0');
    if (c >= L'A' && c <= L'F') return static_cast<int>(c - L'A') + 10;
    if (c >= L'a' && c <= L'f') return static_cast<int>(c - L'a') + 10;
    return -1;
}

/// The character of the number that follows "\x" at `at`, which moves past it; empty when it is none.
std::optional<wchar_t> TakeNumber(std::wstring_view text, std::size_t& at) noexcept {
    Unit unit = 0;
    std::size_t end = at;
    for (; end < text.size() && end < at + 8 && DigitOf(text[end]) >= 0; ++end)
        unit = unit * 16 + static_cast<Unit>(DigitOf(text[end]));
    if (end == at || end == text.size() || text[end] != L';') return std::nullopt;
    if (sizeof(wchar_t) == 2 && unit > 0xFFFFu) return std::nullopt;
    at = end + 1;
    return static_cast<wchar_t>(unit);
}

}  // namespace

std::string EscapePreferenceName(std::wstring_view text) {
    return Escape(text, kNameSyntax);
}

std::string EscapePreferenceValue(std::wstring_view text) {
    return Escape(text, {});
}

std::wstring UnescapePreference(std::string_view bytes) {
    const std::wstring text = FromUtf8(bytes);
    std::wstring out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        const wchar_t c = text[at++];
        const wchar_t next = c == L'\\' && at < text.size() ? text[at] : L'\0';
        std::size_t after = at + 1;
        std::optional<wchar_t> plain;
        if (next == L'\\') plain = L'\\';
        if (next == L'n') plain = L'\n';
        if (next == L'r') plain = L'\r';
        if (next == L't') plain = L'\t';
        if (next == L'x') plain = TakeNumber(text, after);
        if (plain) at = after;
        out += plain.value_or(c);
    }
    return out;
}

}  // namespace host
