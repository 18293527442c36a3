#pragma once

#include <string>
#include <vector>

#include "host/gfx/fill.h"
#include "host/gfx/outline.h"

namespace command {

/// The names of the fields (host::BodyField) in which two records differ; one word for a fill of another
/// kind. What only one of them has counts as different, unless it is empty. Throws bad_alloc.
std::vector<std::string> CompareRecords(const CGE_FILL& before, const CGE_FILL& after);
std::vector<std::string> CompareRecords(const CGE_OUTLINE& before, const CGE_OUTLINE& after);

}  // namespace command
