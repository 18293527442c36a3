#include "fom/pen_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>

#include "fom/grouped.h"

namespace command {
namespace {

constexpr double kUnitsPerPoint = 254000.0 / 72;

std::string Formatted(const char* format, double number) {
    char text[48];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

/// With three digits at least where it is not whole; no length comes near 64 bits.
std::string NumberText(double number) {
    return number < 1000 ? Formatted("%.3g", number)
                         : Grouped(static_cast<std::uint64_t>(std::llround(number)));
}

}  // namespace

std::string PointsText(double length) {
    return NumberText(length / kUnitsPerPoint) + " pt";
}

std::string DegreesText(double microDegrees) {
    return Formatted("%.5g\u00b0", microDegrees / 1e6);
}

std::string PercentText(double share) {
    return NumberText(100 * share) + " %";
}

}  // namespace command
