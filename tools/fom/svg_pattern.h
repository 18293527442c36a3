#pragma once

#include <optional>
#include <string>

#include "host/gfx/fill.h"

#include "svg/omissions.h"

namespace command {

/// The pattern element that paints a vector or colour bitmap fill; `drift` is that of GradientDefinition.
/// Empty, with the reason counted, where the fill has nothing to draw that can be read.
std::optional<std::string> PatternDefinition(const CGE_FILL& fill, const MATRIX& drift,
                                             svg::Omissions& reasons);

}  // namespace command
