#include "svg/data_uri.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "svg/scanner.h"

namespace svg {
namespace {

int Base64Digit(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (IsDigit(c)) return c - '0' + 52;
    if (c == '+') return 62;
    return c == '/' ? 63 : -1;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    unsigned count = 0;
    bool padded = false;
    for (const char c : text) {
        if (IsSpace(c)) continue;
        if (c == '=') {
            padded = true;
            continue;
        }
        const int digit = Base64Digit(c);
        if (digit < 0 || padded) return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        if (++count % 4 != 0) continue;
        for (const unsigned shift : {16U, 8U, 0U})
            bytes += static_cast<char>(bits >> shift & 0xFFU);
        bits = 0;
    }
    if (count % 4 == 1) return std::nullopt;
    if (count % 4 == 2) bytes += static_cast<char>(bits >> 4 & 0xFFU);
    if (count % 4 == 3) {
        bytes += static_cast<char>(bits >> 10 & 0xFFU);
        bytes += static_cast<char>(bits >> 2 & 0xFFU);
    }
    return bytes;
}

int HexValue(char c) {
    if (IsDigit(c)) return c - '0';
    return ToLower(c) >= 'a' && ToLower(c) <= 'f' ? ToLower(c) - 'a' + 10 : -1;
}

std::optional<std::string> DecodePercent(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        const int high = i + 2 < text.size() ? HexValue(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? HexValue(text[i + 2]) : -1;
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return bytes;
}

}  // namespace

bool IsDataUri(std::string_view reference) {
    return EqualsNoCase(reference.substr(0, 5), "data:");
}

std::optional<DataUri> DecodeDataUri(std::string_view reference) {
    const std::size_t comma = reference.find(',');
    if (!IsDataUri(reference) || comma == std::string_view::npos) return std::nullopt;
    const std::string_view header = reference.substr(5, comma - 5);
    const std::size_t lastPart = header.rfind(';');
    const bool base64 =
        lastPart != std::string_view::npos && EqualsNoCase(Trim(header.substr(lastPart + 1)), "base64");
    const std::string_view data = reference.substr(comma + 1);
    std::optional<std::string> bytes = base64 ? DecodeBase64(data) : DecodePercent(data);
    if (!bytes) return std::nullopt;
    DataUri result;
    for (const char c : Trim(header.substr(0, header.find(';'))))
        result.mediaType += ToLower(c);
    result.bytes = std::move(*bytes);
    return result;
}

std::string EncodeDataUri(std::string_view mediaType, std::span<const std::byte> bytes) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text = "data:" + std::string(mediaType) + ";base64,";
    text.reserve(text.size() + (bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (i + k < bytes.size() ? std::to_integer<std::uint32_t>(bytes[i + k]) : 0);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k <= bytes.size() ? digits[bits >> (18 - 6 * k) & 63] : '=';
    }
    return text;
}

std::string_view SniffImageType(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\x89PNG\r\n\x1A\n"sv)) return "image/png";
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return "image/jpeg";
    return {};
}

}  // namespace svg
