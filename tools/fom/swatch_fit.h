#pragma once

#include "host/gfx/fill.h"

#include "fom/fill_painter.h"

namespace command {

/// The object, in document units, that shows a fill well in a swatch of that many pixels. Fountains relative
/// to an object fill it. Those in document units are fitted: the whole run, or circle, is seen. Tiles keep
/// their size at 96 pixels to the inch as long as several, or a whole one, can be seen.
ObjectBounds FitSwatch(const CGE_FILL& fill, double width, double height);

}  // namespace command
