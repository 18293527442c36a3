#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace testing_support {

/// The byte sequences of a text file in tests/golden, by name. A line "[name]" begins one; hexadecimal digits
/// follow, two to a byte, with blanks anywhere between bytes; "#" begins a comment.
std::map<std::string, std::vector<std::uint8_t>> ReadGolden(const char* file);

}  // namespace testing_support
