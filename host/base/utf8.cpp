#include <cstdint>

#include "host/base/wstring.h"

#include "base/utf16.h"

namespace host {

namespace {

void AppendUtf8(std::string& out, char32_t c) {
    const auto put = [&out](char32_t byte) {
        out.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
    };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

/// What a lead byte promises: continuation bytes, its own bits, and the bounds of the first continuation
/// byte, which are what shuts out overlong forms, surrogates and characters above the last one.
struct Lead {
    int more;
    char32_t bits;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
};

Lead ReadLead(unsigned char byte) noexcept {
    if (byte < 0x80) return {0, byte};
    if (byte >= 0xC2 && byte <= 0xDF) return {1, byte & 0x1Fu};
    if (byte == 0xE0) return {2, 0, 0xA0, 0xBF};
    if (byte == 0xED) return {2, 0xD, 0x80, 0x9F};
    if (byte >= 0xE1 && byte <= 0xEF) return {2, byte & 0x0Fu};
    if (byte == 0xF0) return {3, 0, 0x90, 0xBF};
    if (byte >= 0xF1 && byte <= 0xF3) return {3, byte & 0x07u};
    if (byte == 0xF4) return {3, 4, 0x80, 0x8F};
    return {0, detail::kReplacement};
}

/// Takes one character from the front of `text`, or the longest piece of a broken one as U+FFFD.
char32_t TakeUtf8(std::string_view& text) noexcept {
    Lead lead = ReadLead(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    for (; lead.more != 0; --lead.more) {
        if (text.empty()) return detail::kReplacement;
        const auto byte = static_cast<unsigned char>(text.front());
        if (byte < lead.low || byte > lead.high) return detail::kReplacement;
        text.remove_prefix(1);
        lead = {lead.more, (lead.bits << 6) | (byte & 0x3Fu)};
    }
    return lead.bits;
}

}  // namespace

std::string ToUtf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (detail::WideReader reader = detail::ReadWide(text); !reader.AtEnd();) {
        const char32_t c = reader.Next();
        AppendUtf8(out, detail::IsSurrogate(c) ? detail::kReplacement : c);
    }
    return out;
}

std::wstring FromUtf8(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    while (!text.empty())
        detail::AppendWide(out, TakeUtf8(text));
    return out;
}

std::filesystem::path ToPath(std::wstring_view text) {
#ifdef _WIN32
    return std::filesystem::path(std::wstring(text));
#else
    return std::filesystem::path(ToUtf8(text));
#endif
}

std::wstring FromPath(const std::filesystem::path& path) {
#ifdef _WIN32
    return path.native();
#else
    return FromUtf8(path.native());
#endif
}

}  // namespace host
