#pragma once

#include <filesystem>
#include <string>

#include "host/base/wstring.h"

namespace command {

/// A path as messages and reports show it: UTF-8.
inline std::string PathText(const std::filesystem::path& path) {
    return host::ToUtf8(host::FromPath(path));
}

}  // namespace command
