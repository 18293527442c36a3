#pragma once

#include <string>
#include <string_view>

namespace command {

/// The page that shows a demo, whole but for the pictures beside it: a summary (ToJson of a DemoResult)
/// inside what displays it. Needs no network; names in the summary may hold anything.
std::string DemoPage(std::string_view summary);

}  // namespace command
