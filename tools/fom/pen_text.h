#pragma once

#include <string>

namespace command {

/// A length in document units as points: "0.75 pt".
std::string PointsText(double length);
/// Millionths of a degree as degrees: "30°".
std::string DegreesText(double microDegrees);
/// A share of 1: "25 %", "1,200 %".
std::string PercentText(double share);

}  // namespace command
