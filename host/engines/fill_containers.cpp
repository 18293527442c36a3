#include "engines/fill_containers.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <system_error>

#include "host/engines/image_codecs.h"

#include "engines/fill_container_header.h"

namespace host {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n"sv;

/// What of a file is looked at to tell its kind.
constexpr std::size_t kHeadSize = 4096;

/// The first bytes of a regular file; empty when it cannot be read.
std::string ReadHead(const std::filesystem::path& path) {
    std::error_code error;
    // Others, such as a pipe, might never answer.
    if (!std::filesystem::is_regular_file(path, error)) return {};
    std::ifstream file(path, std::ios::binary);
    std::string head(kHeadSize, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

/// Moves past `open` ... `close` at the front of `text`; false when it does not begin so.
bool SkipMarkup(std::string_view& text, std::string_view open, std::string_view close) {
    if (!text.starts_with(open)) return false;
    const std::size_t end = text.find(close, open.size());
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + close.size());
    return true;
}

/// Whether the root element of an XML text in UTF-8 is "svg", with or without a prefix.
bool IsSvg(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    do {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    } while (SkipMarkup(text, "<?", "?>") || SkipMarkup(text, "<!--", "-->") ||
             SkipMarkup(text, "<!DOCTYPE", ">"));
    if (!text.starts_with('<')) return false;
    const std::string_view name = text.substr(1, text.find_first_of(" \t\r\n/>", 1) - 1);
    const std::size_t prefix = name.find(':');
    return (prefix == std::string_view::npos ? name : name.substr(prefix + 1)) == "svg";
}

}  // namespace

std::optional<int> StandaloneFillContainers::ReadSubtype(std::wstring_view name) {
    const std::filesystem::path path = ToPath(name);
    const std::string head = ReadHead(path);
    const auto bytes = std::as_bytes(std::span(head));
    Error reason;
    if (const std::optional<FillContainerHeader> header = ReadFillContainerHeader(bytes, reason)) {
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(path, error);
        if (error || size != header->size + std::uintmax_t{header->payloadSize}) return std::nullopt;
        return static_cast<int>(header->subtype);
    }
    if (CanReadPng() && head.starts_with(kPngSignature))
        return static_cast<int>(FillContainerSubtype::ColorBitmap);
    if (IsSvg(head)) return static_cast<int>(FillContainerSubtype::Vector);
    return std::nullopt;
}

}  // namespace host
