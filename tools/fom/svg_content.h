#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace command {

/// A pattern's content as part of another drawing: ASCII, identifiers and what refers to them begin with
/// kIdMark, and styles stand where no style sheet reaches them. Any bytes may be given: empty for what is not
/// well-formed. Throws bad_alloc.
std::optional<std::string> AdoptContent(std::string_view content);

}  // namespace command
