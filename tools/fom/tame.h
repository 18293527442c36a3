#pragma once

#include <string>
#include <string_view>

namespace command {

/// Takes out of a pattern's canonical content what the renderer does not survive: convolutions by some
/// matrices end the process, noise of many octaves never ends, and filters take time for each of their steps
/// wherever they are used. All filters go when they take more than `mostFilterSteps`. Answers what is
/// missing, in a few words; empty when nothing is.
std::string_view Tame(std::string& content, double mostFilterSteps);

}  // namespace command
