#include "services/preference_text.h"

#include <algorithm>

#include "services/preference_escape.h"

namespace host {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::size_t kNone = std::string_view::npos;

std::string_view Trim(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == kNone) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

bool IsHeader(std::string_view line) noexcept {
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

bool NameIs(std::string_view stored, std::wstring_view name) {
    return CompareFolded(UnescapePreference(Trim(stored)), name) == 0;
}

/// Position of the "=" of a value line; kNone for any other line.
std::size_t FindEquals(std::string_view line) noexcept {
    if (line.empty() || line.front() == ';' || line.front() == '#' || IsHeader(line)) return kNone;
    return line.find('=');
}

}  // namespace

std::optional<PreferenceText> PreferenceText::Parse(std::string_view bytes) {
    // Decoding replaces whatever is invalid, so only valid text comes back as it was.
    if (bytes.find('\0') != kNone || ToUtf8(FromUtf8(bytes)) != bytes) return std::nullopt;
    PreferenceText result;
    result.m_bytes = bytes;
    return result;
}

PreferenceText::Place PreferenceText::FindPlace(std::wstring_view section, std::wstring_view key) const {
    const std::string_view bytes = m_bytes;
    Place place;
    place.begin = place.end = bytes.size();
    std::size_t begin = bytes.starts_with(kMark) ? kMark.size() : 0;
    while (begin < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
        const std::string_view line = Trim(bytes.substr(begin, end - begin));
        if (IsHeader(line)) {
            if (place.hasSection) return place;
            place.hasSection = NameIs(line.substr(1, line.size() - 2), section);
        } else if (const std::size_t equals = FindEquals(line); place.hasSection && equals != kNone) {
            if (NameIs(line.substr(0, equals), key)) return {begin, end, true};
        }
        // A new value goes below the last line with text, above blank lines that set the next section off.
        if (place.hasSection && !line.empty()) place.begin = place.end = std::min(end + 1, bytes.size());
        begin = end + 1;
    }
    return place;
}

std::optional<std::wstring> PreferenceText::Find(std::wstring_view section, std::wstring_view key) const {
    const Place place = FindPlace(section, key);
    if (place.begin == place.end) return std::nullopt;
    const std::string_view line = std::string_view(m_bytes).substr(place.begin, place.end - place.begin);
    return UnescapePreference(Trim(line.substr(line.find('=') + 1)));
}

void PreferenceText::Set(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
    const Place place = FindPlace(section, key);
    const std::string_view lineEnd = LineEnd();
    std::string line = EscapePreferenceName(key) + '=' + EscapePreferenceValue(value);
    if (place.begin != place.end) {
        if (m_bytes[place.end - 1] == '\r') line += '\r';
        m_bytes.replace(place.begin, place.end - place.begin, line);
        return;
    }
    line += lineEnd;
    std::string text;
    if (place.begin != 0 && place.begin == m_bytes.size() && !m_bytes.ends_with('\n')) text += lineEnd;
    if (!place.hasSection) {
        if (!m_bytes.empty()) text += lineEnd;
        text.append("[").append(EscapePreferenceName(section)).append("]").append(lineEnd);
    }
    m_bytes.insert(place.begin, text + line);
}

std::string_view PreferenceText::LineEnd() const noexcept {
    const std::size_t end = m_bytes.find('\n');
    return end != kNone && end > 0 && m_bytes[end - 1] == '\r' ? "\r\n" : "\n";
}

}  // namespace host
