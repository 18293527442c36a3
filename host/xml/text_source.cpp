#include "xml/text_source.h"

#include <cstring>
#include <fstream>
#include <system_error>

#include "host/xml/xml_document.h"

namespace host::detail {

XmlText XmlText::Allocate(std::size_t size) {
    return {std::make_unique_for_overwrite<char[]>(size), size};
}

XmlText XmlText::Copy(std::string_view text) {
    XmlText copy = Allocate(text.size());
    if (!text.empty()) std::memcpy(copy.data.get(), text.data(), text.size());
    return copy;
}

std::optional<XmlTextFault> ReadXmlFile(const std::filesystem::path& path, XmlText& text) {
    namespace fs = std::filesystem;
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    if (status.type() == fs::file_type::not_found) return XmlTextFault{"no such file"};
    if (failure) return XmlTextFault{"cannot be opened: " + failure.message()};
    if (!fs::is_regular_file(status)) return XmlTextFault{"not a regular file"};
    const std::uintmax_t size = fs::file_size(path, failure);
    if (failure) return XmlTextFault{"cannot be opened: " + failure.message()};
    if (size == 0) return XmlTextFault{"the file is empty"};
    if (size > XmlDocument::kMaxBytes) return XmlTextFault{"longer than 512 MiB"};

    std::ifstream file;
    file.rdbuf()->pubsetbuf(nullptr, 0);
    file.open(path, std::ios::binary);
    if (!file) return XmlTextFault{"cannot be opened for reading"};
    text = XmlText::Allocate(static_cast<std::size_t>(size));
    file.read(text.data.get(), static_cast<std::streamsize>(size));
    if (file.bad() || (file.fail() && !file.eof())) return XmlTextFault{"cannot be read"};
    text.size = static_cast<std::size_t>(file.gcount());
    if (text.size == 0) return XmlTextFault{"the file is empty"};
    return std::nullopt;
}

}  // namespace host::detail
