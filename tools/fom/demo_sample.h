#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace command {

/// The places, ascending, of at most `count` of the names: those whose MD5 is smallest. So every machine
/// takes the same, in whatever order they come, and one more name changes one at most.
std::vector<std::size_t> PickSample(const std::vector<std::string>& names, std::size_t count);

}  // namespace command
