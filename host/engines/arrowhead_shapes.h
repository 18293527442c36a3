#pragma once

#include <string_view>

namespace host {

/// The arrowheads that come with the library, as an arrowhead text (docs/formats/arrowheads.md).
std::string_view BuiltInArrowheadText() noexcept;

}  // namespace host
