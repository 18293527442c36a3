#pragma once

#include <vector>

#include "host/color/colorspec.h"
#include "host/gfx/fountain_fill.h"

namespace command {

/// A colour for the screen, each part from 0 to 1; not multiplied by its opacity.
struct ScreenColor {
    double r = 0, g = 0, b = 0, opacity = 1;
};

ScreenColor ToScreen(const CLR_COLORSPEC& color);

/// The colours of a fountain along its run: what padding, steps and the order of stops come to.
class FountainRamp {
public:
    struct Stop {
        double offset = 0;
        ScreenColor color;
    };

    explicit FountainRamp(const CGE_FOUNTAINFILL& fountain);

    /// At least one; offsets from 0 to 1 and never falling. Equal ones stand for a sudden change.
    const std::vector<Stop>& Stops() const noexcept { return m_stops; }
    /// The colour at any place of the run's line, beyond its ends as the spread says.
    ScreenColor At(double place) const noexcept;

private:
    ScreenColor Between(double offset) const noexcept;
    void CutIntoSteps(int steps);

    std::vector<Stop> m_stops;
    CgeFountainFillSpreadMethod m_spread;
};

}  // namespace command
