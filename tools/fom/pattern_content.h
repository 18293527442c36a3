#pragma once

#include <string>

namespace command {

/// The bytes that a vector fill keeps as temporary data: canonical SVG text where this command made the fill,
/// but anything in a stored one. Empty without data, and for more than 64 MiB. Throws bad_alloc.
std::string ReadPatternContent(unsigned tmpFile);

}  // namespace command
