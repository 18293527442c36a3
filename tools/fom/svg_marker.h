#pragma once

#include <string>

#include "fom/arrow_shape.h"
#include "fom/arrowhead_mapping.h"

namespace command {

/// The marker element that draws an arrowhead at that end of a line, in the line's `color` ("#rrggbb").
std::string MarkerDefinition(const Arrow& arrow, LineEnd end, const std::string& color, double opacity);

}  // namespace command
