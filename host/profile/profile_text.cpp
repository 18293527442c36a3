#include "profile/profile_text.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/base/wstring.h"

namespace host {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

bool IsBlank(wchar_t c) noexcept {
    return c >= L'\0' && c <= L' ';
}

/// UTF-16 from the first byte after the mark; an odd byte at the end does not count. Text may hold zeros,
/// which end a text elsewhere, so it is decoded piece by piece.
std::wstring DecodeUtf16(std::span<const std::byte> bytes, bool bigEndian) {
    std::wstring text;
    text.reserve(bytes.size() / 2);
    std::vector<char16_t> units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = std::to_integer<std::uint32_t>(bytes[i]);
        const auto second = std::to_integer<std::uint32_t>(bytes[i + 1]);
        const auto unit = static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first);
        if (unit != 0) {
            units.push_back(unit);
            continue;
        }
        text += UnpackUtf16(units);
        text += L'\0';
        units.clear();
    }
    return text += UnpackUtf16(units);
}

std::wstring DecodeLatin1(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char c : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return text;
}

bool StartsWith(std::span<const std::byte> bytes, std::string_view mark) noexcept {
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).starts_with(mark);
}

}  // namespace

std::wstring DecodeProfile(std::span<const std::byte> bytes) {
    if (StartsWith(bytes, "\xFF\xFE")) return DecodeUtf16(bytes.subspan(2), false);
    if (StartsWith(bytes, "\xFE\xFF")) return DecodeUtf16(bytes.subspan(2), true);
    std::string_view narrow(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (StartsWith(bytes, "\xEF\xBB\xBF")) return FromUtf8(narrow.substr(3));
    std::wstring text = FromUtf8(narrow);
    // Decoding replaces whatever is invalid, so only valid text comes back as it was.
    return ToUtf8(text) == narrow ? text : DecodeLatin1(narrow);
}

std::wstring_view TrimProfile(std::wstring_view text) noexcept {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::wstring_view UnquoteProfile(std::wstring_view value) noexcept {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == L'"' || value.front() == L'\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::optional<ProfileLine> ProfileParser::Next() noexcept {
    while (!m_rest.empty()) {
        const std::size_t end = std::min(m_rest.find_first_of(L"\r\n"), m_rest.size());
        const std::wstring_view text = TrimProfile(m_rest.substr(0, end));
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        if (text.empty()) continue;
        ProfileLine line;
        if (text.front() == L';') return line;
        if (text.front() == L'[') {
            const std::size_t close = text.rfind(L']');
            if (close == kNone) return line;
            line.kind = ProfileLine::Kind::Section;
            line.name = TrimProfile(text.substr(1, close - 1));
            return line;
        }
        const std::size_t equals = text.find(L'=');
        if (equals == kNone) return line;
        line.kind = ProfileLine::Kind::Entry;
        line.name = TrimProfile(text.substr(0, equals));
        line.value = TrimProfile(text.substr(equals + 1));
        return line;
    }
    return std::nullopt;
}

}  // namespace host
