#pragma once

#include <string_view>

#include "svg/bounds.h"
#include "svg/path_steps.h"

namespace svg {

/// Adds the outline of path data to bounds or steps. Answers false when the data is malformed; what stands
/// before the mistake is added, as it is what is drawn.
bool AddPathData(std::string_view data, Bounds& bounds);
bool AddPathData(std::string_view data, PathSteps& steps);

/// Adds a list of points; false when it is malformed.
bool AddPoints(std::string_view points, Bounds& bounds);
bool AddPoints(std::string_view points, PathSteps& steps);

}  // namespace svg
