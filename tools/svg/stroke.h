#pragma once

#include <vector>

#include "svg/marker.h"
#include "svg/paint.h"
#include "svg/style.h"

namespace svg {

/// How the contour of a shape is drawn. Lengths are in the shape's own user units.
struct Stroke {
    /// None for a stroke of no width: then nothing below means anything. Text has strokes as other shapes do.
    Paint paint;
    /// Opacity of the stroke, from 0 to 1; colours have an alpha of their own beside it.
    double opacity = 1;
    double width = 1;
    LineCap cap = LineCap::Butt;
    LineJoin join = LineJoin::Miter;
    double miterLimit = 4;
    /// Dash, gap, dash, …: an even number, none negative and one above 0; empty for an unbroken line.
    std::vector<double> dashes;
    /// How far into the dashes the line starts.
    double dashOffset = 0;
    /// The width is that of the screen, whatever the transform ("vector-effect").
    bool nonScaling = false;
    /// Null for none, and on shapes other than paths, lines, polylines and polygons; they belong to the
    /// document.
    const Marker* markerStart = nullptr;
    const Marker* markerMid = nullptr;
    const Marker* markerEnd = nullptr;
};

}  // namespace svg
