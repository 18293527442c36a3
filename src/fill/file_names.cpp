#include "fill/file_names.h"

#include <filesystem>

#include "host/base/wstring.h"

bool VyrFOM::IsFile(std::wstring_view path) {
    std::error_code error;
    return !path.empty() && std::filesystem::is_regular_file(host::ToPath(path), error);
}

std::wstring VyrFOM::JoinPath(std::wstring_view folder, std::wstring_view name) {
    constexpr auto separator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);
    std::wstring path(folder);
    if (!path.empty() && path.back() != L'/' && path.back() != separator) path += separator;
    return path.append(name);
}
