#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace svg {

class Scanner;

/// A colour of the sRGB space; alpha from 0 (transparent) to 1.
struct Color {
    std::uint8_t r = 0, g = 0, b = 0;
    float alpha = 1;

    bool operator==(const Color&) const = default;
};

/// Reads one colour: hexadecimal, rgb(), rgba(), hsl(), hsla(), a name or "transparent"; not currentColor.
/// The scanner is left behind it, or anywhere when there is none.
std::optional<Color> ScanColor(Scanner& in);

/// One of the 147 names, without regard to case.
std::optional<Color> FindNamedColor(std::string_view name);

}  // namespace svg
