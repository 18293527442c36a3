#pragma once

#include <cstddef>
#include <string_view>

namespace host::detail {

/// Upper estimate, in bytes, of the tree that parsing `text` will build.
std::size_t EstimateXmlTree(std::string_view text);

/// Whether the tree of `text` is known to stay within the memory that a document may take.
bool IsXmlTreeAffordable(std::string_view text);

}  // namespace host::detail
