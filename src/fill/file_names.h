#pragma once

#include <string>
#include <string_view>

namespace VyrFOM {

/// Whether the path names a regular file, links followed. False for an empty path.
bool IsFile(std::wstring_view path);
/// The path of `name` in `folder`, which may end with a separator.
std::wstring JoinPath(std::wstring_view folder, std::wstring_view name);

}  // namespace VyrFOM
