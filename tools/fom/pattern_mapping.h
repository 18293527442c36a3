#pragma once

#include <optional>
#include <string>

#include "host/base/error.h"
#include "host/gfx/fill.h"

#include "svg/bounds.h"
#include "svg/omissions.h"
#include "svg/paint.h"

namespace command {

/// The side of an object in the boxes of a pattern whose tile is a share of the object, in document units.
inline constexpr double kObjectSide = 254000;

/// The fill that paints a pattern: a colour bitmap when its content is one raster image, otherwise a vector
/// fill whose temporary data is the content's own bytes.
///
/// The bounding box is the tile, in document units of the shape's user space, or, for a tile in units of the
/// shape's box, as a share of an object of side kObjectSide. The original bounding box is the same rectangle
/// in the coordinates of the content, where 96 units are an inch. `shape` (empty when it is not known) is the
/// box that is assumed when the content does not scale along with its tile. What the fill cannot say is
/// counted.
///
/// Empty, with the reason in `error`, when the image is broken.
std::optional<CGE_FILL> MapPattern(const svg::Pattern& pattern, const std::optional<svg::Rect>& shape,
                                   svg::Omissions& omissions, host::Error& error);

/// Two patterns of equal keys are painted by the same fill.
std::string PatternKey(const svg::Pattern& pattern, const std::optional<svg::Rect>& shape);

}  // namespace command
