#include "svg/color.h"

#include <algorithm>
#include <cmath>

#include "svg/scanner.h"

namespace svg {
namespace {

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

int HexDigit(char c) {
    if (IsDigit(c)) return c - '0';
    const char lower = ToLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::optional<Color> ScanHex(Scanner& in) {
    unsigned digits[8];
    std::size_t count = 0;
    for (; count < 8 && HexDigit(in.Peek()) >= 0; ++count)
        digits[count] = static_cast<unsigned>(HexDigit(in.Take()));
    if (IsLetter(in.Peek()) || IsDigit(in.Peek())) return std::nullopt;
    const auto channel = [&](std::size_t i) {
        return static_cast<std::uint8_t>(count >= 6 ? digits[2 * i] * 16 + digits[2 * i + 1]
                                                    : digits[i] * 17);
    };
    if (count != 3 && count != 4 && count != 6 && count != 8) return std::nullopt;
    Color color{channel(0), channel(1), channel(2), 1};
    if (count == 4 || count == 8) color.alpha = static_cast<float>(channel(3)) / 255.0F;
    return color;
}

/// One argument of a colour function: a number or a percentage.
struct Argument {
    double value = 0;
    bool percent = false;
};

std::optional<Argument> ScanArgument(Scanner& in) {
    Argument result;
    in.SkipSpace();
    if (!in.Number(result.value)) return std::nullopt;
    result.percent = in.Accept('%');
    if (!result.percent) in.AcceptWord("deg");
    return result;
}

double HueChannel(double low, double high, double hue) {
    hue = hue - std::floor(hue);
    if (hue * 6 < 1) return low + (high - low) * hue * 6;
    if (hue * 2 < 1) return high;
    if (hue * 3 < 2) return low + (high - low) * (2.0 / 3 - hue) * 6;
    return low;
}

Color FromHsl(double hue, double saturation, double lightness) {
    saturation = std::clamp(saturation / 100, 0.0, 1.0);
    lightness = std::clamp(lightness / 100, 0.0, 1.0);
    const double high =
        lightness <= 0.5 ? lightness * (saturation + 1) : lightness + saturation - lightness * saturation;
    const double low = lightness * 2 - high;
    const double turn = hue / 360;
    return {ToByte(255 * HueChannel(low, high, turn + 1.0 / 3)), ToByte(255 * HueChannel(low, high, turn)),
            ToByte(255 * HueChannel(low, high, turn - 1.0 / 3)), 1};
}

/// The arguments of rgb() or hsl(), behind the bracket. An alpha may follow in either form.
std::optional<Color> ScanFunction(Scanner& in, bool hsl) {
    Argument arguments[3];
    for (Argument& argument : arguments) {
        const auto found = ScanArgument(in);
        if (!found) return std::nullopt;
        argument = *found;
        in.SkipSeparator();
    }
    Color color;
    if (hsl) {
        if (arguments[0].percent || !arguments[1].percent || !arguments[2].percent) return std::nullopt;
        color = FromHsl(arguments[0].value, arguments[1].value, arguments[2].value);
    } else {
        const bool percent = arguments[0].percent;
        if (arguments[1].percent != percent || arguments[2].percent != percent) return std::nullopt;
        const auto channel = [&](std::size_t i) {
            return ToByte(percent ? arguments[i].value * 255 / 100 : arguments[i].value);
        };
        color = {channel(0), channel(1), channel(2), 1};
    }
    if (in.Accept('/') || in.Peek() != ')') {
        const auto alpha = ScanArgument(in);
        if (!alpha) return std::nullopt;
        color.alpha =
            static_cast<float>(std::clamp(alpha->percent ? alpha->value / 100 : alpha->value, 0.0, 1.0));
        in.SkipSpace();
    }
    if (!in.Accept(')')) return std::nullopt;
    return color;
}

}  // namespace

std::optional<Color> ScanColor(Scanner& in) {
    if (in.Accept('#')) return ScanHex(in);
    const std::string_view name = in.Identifier();
    if (in.Peek() == '(') {
        in.Take();
        if (EqualsNoCase(name, "rgb") || EqualsNoCase(name, "rgba")) return ScanFunction(in, false);
        if (EqualsNoCase(name, "hsl") || EqualsNoCase(name, "hsla")) return ScanFunction(in, true);
        return std::nullopt;
    }
    if (EqualsNoCase(name, "transparent")) return Color{0, 0, 0, 0};
    return FindNamedColor(name);
}

}  // namespace svg
