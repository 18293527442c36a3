#pragma once

#include "svg/bounds.h"

namespace svg {

/// One step of a path whose arcs and quadratic curves have become cubic ones, in absolute coordinates.
struct PathStep {
    enum class Kind : unsigned char { Move, Line, Curve, Close };

    Kind kind = Kind::Move;
    Point control1, control2;  ///< of a curve
    Point to;                  ///< not of Close
};

}  // namespace svg
