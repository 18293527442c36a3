#pragma once

#include <vector>

#include "host/base/export.h"

/// The widths of a stroke at one place of its path.
struct CGE_VARIABLEPOINT {
    double position = 0;  ///< share of the path's length, 0 at its start to 1 at its end
    double left = 0;      ///< document units from the path to the stroke's left edge
    double right = 0;     ///< document units from the path to the stroke's right edge
};

/// A stroke whose width varies along the path. Widths run evenly from point to point; before the first and
/// after the last one they stay. Without points the stroke is as wide as the outline says.
struct FOM_API CGE_VARIABLEATTRIB {
    std::vector<CGE_VARIABLEPOINT> points;  ///< by rising position

    /// Multiplies the widths; positions stay.
    void Scale(double factor) noexcept;

    /// A total order: the number of points, then the points by the bytes of position, left and right.
    /// Negative, 0 or positive.
    static int CompareTo(const CGE_VARIABLEATTRIB& a, const CGE_VARIABLEATTRIB& b) noexcept;
    friend bool operator==(const CGE_VARIABLEATTRIB& a, const CGE_VARIABLEATTRIB& b) noexcept {
        return CompareTo(a, b) == 0;
    }
};
