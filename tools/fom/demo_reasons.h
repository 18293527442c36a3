#pragma once

#include <string_view>

namespace command {

/// Whether what an import could not carry over, or what the rewriting names, may show when a drawing is
/// repainted from the document. Most of it cannot: geometry, opacity and whatever is no paint stay in the
/// drawing, and so do paints that the rewriting names because the drawing keeps its own.
bool ShowsInRewrite(std::string_view name) noexcept;

}  // namespace command
