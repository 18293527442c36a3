#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// "word-", or with a number before the hyphen: what no identifier of a drawing begins with, as the drawing's
/// text has the same letters nowhere.
inline std::string FreePrefix(std::string_view drawing, const std::string& word) {
    std::string prefix = word + "-";
    for (std::size_t i = 2; drawing.find(prefix) != std::string_view::npos; ++i)
        prefix = word + std::to_string(i) + "-";
    return prefix;
}

}  // namespace command
