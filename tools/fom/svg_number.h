#pragma once

#include <string>

#include "host/geometry/matrix.h"

namespace command {

struct ScreenColor;

/// The shortest text that reads back as the same finite number; anything else is 0.
void AppendNumber(std::string& out, double value);
std::string NumberText(double value);

/// The number of the fewest digits from `low` to `high`: what a record holds rounded may have been any of
/// these, and was most likely written so.
double RoundestWithin(double low, double high);

/// Without the last digits of a calculation, and 0 for what is nothing beside `scale`.
double WithoutNoise(double value, double scale);

/// "matrix(…)".
std::string MatrixText(const MATRIX& m);

/// "#rrggbb"; the opacity is left to the caller.
std::string ColorText(const ScreenColor& color);

}  // namespace command
