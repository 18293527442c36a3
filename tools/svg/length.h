#pragma once

#include <optional>
#include <string_view>

namespace svg {

/// A length as written. Absolute units are already user units (96 to the inch).
struct Length {
    enum class Unit : unsigned char { User, Percent, Em, Ex };

    double value = 0;
    Unit unit = Unit::User;

    /// In user units; `whole` is what 100 percent is.
    double Resolve(double fontSize, double whole) const;
};

/// Reads one length with nothing else beside it.
std::optional<Length> ParseLength(std::string_view text);

/// Reads a number, or a percentage as a fraction of 1.
std::optional<double> ParseFraction(std::string_view text);

}  // namespace svg
