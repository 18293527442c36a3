#pragma once

#include "svg/bounds.h"

namespace svg {

/// An arc as a centre, semi-axes, the axes' rotation and a range of angles, in radians.
struct CenteredArc {
    Point center, radii;
    double rotation, start, extent;

    Point At(double angle) const;
    /// Derivative of At.
    Point SlopeAt(double angle) const;
    bool Covers(double angle) const;
};

/// The arc of path data between two points that differ; radii that are too short grow. `radii` are not zero,
/// `rotation` is in radians. Not finite for what numbers cannot hold.
CenteredArc FindCenter(Point from, Point radii, double rotation, bool large, bool sweep, Point to);

}  // namespace svg
