#include "fom/drawing_name.h"

#include <algorithm>

#include "host/base/wstring.h"

namespace command {
namespace {

bool IsControl(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool IsPart(std::string_view part) noexcept {
    return !part.empty() && part != "." && part != "..";
}

/// At most so many bytes from its end, from the beginning of a character on.
std::string_view CutFront(std::string_view text, std::size_t most) noexcept {
    if (text.size() <= most) return text;
    text.remove_prefix(text.size() - most);
    while (!text.empty() && (static_cast<unsigned char>(text.front()) & 0xC0) == 0x80)
        text.remove_prefix(1);
    return text;
}

std::string WithoutRoot(std::string_view name) {
    return std::string(name.substr(std::min(name.find_first_not_of('/'), name.size())));
}

std::string WithNumber(const std::string& name, std::size_t number) {
    constexpr std::size_t kLongestExtension = 64;
    const std::size_t slash = name.rfind('/');
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || dot <= start || name.size() - dot > kLongestExtension) dot = name.size();
    const std::string tail = " (" + std::to_string(number) + ")" + name.substr(dot);
    const std::string_view head = std::string_view(name).substr(0, dot);
    return WithoutRoot(CutFront(head, kLongestDrawingName - tail.size())) + tail;
}

}  // namespace

bool IsPlainText(std::string_view text) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (text.empty() || std::any_of(text.begin(), text.end(), IsControl)) return false;
    return std::all_of(text.begin(), text.end(), isAscii) || host::ToUtf8(host::FromUtf8(text)) == text;
}

bool IsDrawingName(std::string_view name) {
    if (name.size() > kLongestDrawingName || name.find('\\') != name.npos || !IsPlainText(name)) return false;
    for (std::size_t at = 0, slash = 0; slash != name.npos; at = slash + 1) {
        slash = name.find('/', at);
        if (!IsPart(name.substr(at, slash - at))) return false;
    }
    // Drives have a colon; on other systems it is a character as any other.
    return name.find(':') == name.npos || !host::ToPath(host::FromUtf8(name)).has_root_path();
}

std::string ToDrawingName(const std::filesystem::path& path) {
    std::string name;
    for (const std::filesystem::path& part : path.relative_path()) {
        const std::string text = host::ToUtf8(host::FromPath(part));
        if (IsPart(text)) name.append(name.empty() ? "" : "/").append(text);
    }
    std::replace_if(
        name.begin(), name.end(), [](char c) { return IsControl(c) || c == '\\'; }, '_');
    const std::string cut = WithoutRoot(CutFront(name, kLongestDrawingName));
    return cut.empty() ? "drawing" : cut;
}

std::string DrawingNames::Take(std::string name) {
    std::size_t& times = m_taken[name];
    if (++times == 1) return name;
    for (;; ++times) {
        std::string numbered = WithNumber(name, times);
        if (m_taken.try_emplace(numbered, 1).second) return numbered;
    }
}

}  // namespace command
