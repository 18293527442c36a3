#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace host::detail {

/// Bytes that a parser may change in place.
struct XmlText {
    std::unique_ptr<char[]> data;
    std::size_t size = 0;

    std::string_view View() const { return {data.get(), size}; }
    static XmlText Allocate(std::size_t size);
    static XmlText Copy(std::string_view text);
};

/// What is wrong with a text, and where (0 when it has no place).
struct XmlTextFault {
    std::string reason;
    std::size_t offset = 0;
};

/// Reads the whole of a regular file that is neither empty nor longer than XmlDocument::kMaxBytes.
std::optional<XmlTextFault> ReadXmlFile(const std::filesystem::path& path, XmlText& text);

/// Turns the text into valid UTF-8 without NUL bytes, from the encoding it declares.
std::optional<XmlTextFault> NormalizeXmlEncoding(XmlText& text);

}  // namespace host::detail
