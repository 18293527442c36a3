#pragma once

#include <cstdint>
#include <string>

namespace command {

/// 1234567 as "1,234,567".
inline std::string Grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, 1, ',');
    return text;
}

}  // namespace command
