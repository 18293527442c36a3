#pragma once

#include <string>
#include <vector>

#include "svg/paint.h"
#include "svg/path_step.h"
#include "svg/style.h"

namespace svg {

/// What stands at a vertex of a path.
struct Marker {
    enum class Orient : unsigned char { Fixed, Auto, AutoStartReverse };

    /// The content when that is exactly one filled path, circle, ellipse, polygon or rectangle, without
    /// stroke and effects; empty otherwise. Each sub-path begins with Move and ends with Close, and all
    /// coordinates are finite. Its place is where the marker's reference point is (0, 0), x runs along the
    /// line for Auto, and 1 is one stroke width, or one user unit when `strokeWidthUnits` is false.
    std::vector<PathStep> outline;
    /// Of the outline.
    Paint fill;
    FillRule fillRule = FillRule::NonZero;
    double fillOpacity = 1;
    /// The outline is filled with what strokes the line ("context-stroke"); `fill` is then none.
    bool fillIsStroke = false;
    bool strokeWidthUnits = true;
    Orient orient = Orient::Fixed;
    double angle = 0;  ///< degrees, for Fixed
    std::string id;
};

}  // namespace svg
