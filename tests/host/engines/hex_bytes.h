#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace testing_support {

/// The bytes that pairs of hexadecimal digits stand for.
inline std::vector<std::byte> FromHex(std::string_view digits) {
    std::vector<std::byte> bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<std::byte>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
    return bytes;
}

}  // namespace testing_support
