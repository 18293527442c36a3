#pragma once

#include <cmath>
#include <limits>

namespace VyrFOM {

/// The nearest whole number, halves away from zero, held within the range of T. NaN gives 0.
template <class T>
T RoundTo(double value) noexcept {
    if (std::isnan(value)) return T{};
    const double rounded = std::round(value);
    if (rounded <= static_cast<double>(std::numeric_limits<T>::min())) return std::numeric_limits<T>::min();
    if (rounded >= static_cast<double>(std::numeric_limits<T>::max())) return std::numeric_limits<T>::max();
    return static_cast<T>(rounded);
}

}  // namespace VyrFOM
