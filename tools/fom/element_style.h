#pragma once

#include <string>
#include <string_view>

#include "svg/splice.h"
#include "svg/start_tags.h"

namespace command {

/// Puts declarations, all of them important, where nothing overrules them: at the beginning of the element's
/// style, which what is left open in the rest of it cannot reach, and after that when `style`, its value,
/// insists on a paint of its own. False, with nothing done, when neither is safe.
bool InsertStyle(svg::Splice& splice, const svg::StartTag& tag, std::string_view style,
                 const std::string& declarations);

}  // namespace command
