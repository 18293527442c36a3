#include <cstdint>
#include <cstring>

#include "xml/text_source.h"

namespace host::detail {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

unsigned At(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
}

std::size_t FirstHighByte(std::string_view text, std::size_t from) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    while (from + 32 <= text.size()) {
        std::uint64_t words[4];
        std::memcpy(words, text.data() + from, sizeof words);
        if (((words[0] | words[1] | words[2] | words[3]) & kHighBits) != 0) break;
        from += sizeof words;
    }
    while (from < text.size() && At(text, from) < 0x80)
        ++from;
    return from;
}

/// Length of the UTF-8 sequence at `index`; 0 when it is not valid.
std::size_t SequenceLength(std::string_view text, std::size_t index) {
    const unsigned lead = At(text, index);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || index + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((At(text, index + i) & 0xC0U) != 0x80U) return 0;
    }
    const unsigned second = At(text, index + 1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outOfRange = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return length > 1 && (overlong || outOfRange) ? 0 : length;
}

std::size_t FirstInvalidUtf8(std::string_view text, std::size_t from) {
    while (from < text.size()) {
        if (At(text, from) < 0x80) {
            from = FirstHighByte(text, from);
            continue;
        }
        const std::size_t length = SequenceLength(text, from);
        if (length == 0) return from;
        from += length;
    }
    return kNone;
}

void AppendUtf8(char*& out, std::uint32_t code) {
    const auto put = [&out](std::uint32_t byte) {
        *out++ = static_cast<char>(static_cast<unsigned char>(byte));
    };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0U | (code >> 6));
        put(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        put(0xE0U | (code >> 12));
        put(0x80U | ((code >> 6) & 0x3FU));
        put(0x80U | (code & 0x3FU));
    } else {
        put(0xF0U | (code >> 18));
        put(0x80U | ((code >> 12) & 0x3FU));
        put(0x80U | ((code >> 6) & 0x3FU));
        put(0x80U | (code & 0x3FU));
    }
}

void ConvertLatin1(XmlText& text) {
    XmlText converted = XmlText::Allocate(text.size * 2);
    char* out = converted.data.get();
    for (const char c : text.View())
        AppendUtf8(out, static_cast<unsigned char>(c));
    converted.size = static_cast<std::size_t>(out - converted.data.get());
    text = std::move(converted);
}

bool ConvertUtf16(XmlText& text, bool bigEndian) {
    const std::string_view bytes = text.View();
    if (bytes.size() % 2 != 0) return false;
    const auto unit = [&](std::size_t i) {
        return bigEndian ? At(bytes, i) << 8 | At(bytes, i + 1) : At(bytes, i + 1) << 8 | At(bytes, i);
    };
    XmlText converted = XmlText::Allocate(bytes.size() / 2 * 3);
    char* out = converted.data.get();
    for (std::size_t i = 2; i < bytes.size(); i += 2) {
        std::uint32_t code = unit(i);
        if (code >= 0xD800 && code < 0xE000) {
            const std::uint32_t low = i + 2 < bytes.size() ? unit(i + 2) : 0;
            if (code >= 0xDC00 || low < 0xDC00 || low >= 0xE000) return false;
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
            i += 2;
        }
        AppendUtf8(out, code);
    }
    converted.size = static_cast<std::size_t>(out - converted.data.get());
    text = std::move(converted);
    return true;
}

/// The encoding named by the XML declaration, in lower case; empty when it names none.
std::string DeclaredEncoding(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    if (!text.starts_with("<?xml")) return {};
    text = text.substr(0, text.find("?>"));
    std::size_t at = text.find("encoding");
    if (at == std::string_view::npos) return {};
    at = text.find_first_of("\"'", at);
    if (at == std::string_view::npos) return {};
    const std::size_t end = text.find(text[at], at + 1);
    if (end == std::string_view::npos) return {};
    std::string name(text.substr(at + 1, end - at - 1));
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return name;
}

bool IsLatin1(std::string_view encoding) {
    return encoding == "iso-8859-1" || encoding == "latin1" || encoding == "iso_8859-1";
}

}  // namespace

std::optional<XmlTextFault> NormalizeXmlEncoding(XmlText& text) {
    const std::string_view bytes = text.View();
    if (bytes.starts_with("\x1F\x8B")) return XmlTextFault{"compressed (gzip) text is not read"};
    const bool little = bytes.starts_with("\xFF\xFE");
    const bool big = bytes.starts_with("\xFE\xFF");
    const bool utf16 = little || big;
    if (utf16 && !ConvertUtf16(text, big)) return XmlTextFault{"damaged UTF-16 text"};

    const std::string_view view = text.View();
    if (view.empty()) return XmlTextFault{"the text is empty"};
    if (const void* nul = std::memchr(view.data(), 0, view.size()); nul != nullptr) {
        return XmlTextFault{"a NUL byte in the text",
                            static_cast<std::size_t>(static_cast<const char*>(nul) - view.data())};
    }
    const std::size_t high = FirstHighByte(view, 0);
    if (high == view.size() || utf16) return std::nullopt;

    const std::string encoding = DeclaredEncoding(view);
    if (IsLatin1(encoding)) {
        ConvertLatin1(text);
        return std::nullopt;
    }
    if (!encoding.empty() && encoding != "utf-8" && encoding != "utf8" && encoding != "us-ascii") {
        return XmlTextFault{"text encoding '" + encoding.substr(0, 40) + "' is not supported", high};
    }
    const std::size_t invalid = FirstInvalidUtf8(view, high);
    if (invalid != kNone) return XmlTextFault{"not valid UTF-8", invalid};
    return std::nullopt;
}

}  // namespace host::detail
