#pragma once

#include <span>
#include <vector>

#include "host/geometry/matrix.h"

namespace command {

/// A line of straight pieces. A closed one goes back from its last point to the first.
struct Polyline {
    std::vector<VECTOR2D> points;
    bool closed = false;

    /// Continues the line, which is not empty, with a cubic curve of short straight pieces.
    void AddCurve(VECTOR2D control1, VECTOR2D control2, VECTOR2D to);
    double Length() const noexcept;
    Polyline Transformed(const MATRIX& m) const;
};

/// The part of an open line between two distances along it. What lies beyond an end is added straight on;
/// nothing is left of a line without length, or where `to` does not lie behind `from`.
Polyline Cut(const Polyline& line, double from, double to);

/// The dashes of a line, from its beginning: dash, gap, dash, … Lengths are above 0 in all. A dash is at
/// least as long as `speck`, so that one without length shows its direction. Too many dashes to be told apart
/// are one unbroken line. On a closed line the last dash runs on into the first one.
std::vector<Polyline> CutIntoDashes(const Polyline& line, std::span<const double> lengths, double speck);

}  // namespace command
