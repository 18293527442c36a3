#pragma once

#include <optional>
#include <string>

#include "host/gfx/fountain_fill.h"

#include "svg/omissions.h"
#include "svg/shape.h"

namespace command {

/// The gradient element that paints a fountain in the user space of `shape`. `drift` maps the user space that
/// the fountain was made in to the shape's own, in document units: mostly the identity. Empty, with the
/// reason counted, for what SVG has no gradient for.
std::optional<std::string> GradientDefinition(const CGE_FOUNTAINFILL& fountain, const MATRIX& drift,
                                              const svg::Shape& shape, svg::Omissions& reasons);

/// Whether that element is another one for a shape of another size or place.
bool DependsOnShape(const CGE_FOUNTAINFILL& fountain, const MATRIX& drift) noexcept;

}  // namespace command
