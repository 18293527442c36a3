#include "fom/svg_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>

#include "fom/fountain_ramp.h"

namespace command {
namespace {

constexpr int kMostDigits = std::numeric_limits<double>::max_digits10;
/// Digits that calculations with doubles leave as they were.
constexpr double kNoise = 1e-13;

/// The number that is written with so many digits.
double WithDigits(double value, int digits) {
    char text[64];
    const auto end =
        std::to_chars(std::begin(text), std::end(text), value, std::chars_format::scientific, digits - 1);
    double result = value;
    std::from_chars(text, end.ptr, result);
    return result;
}

}  // namespace

void AppendNumber(std::string& out, double value) {
    char text[64];
    // Zeros of both signs are written alike.
    const double written = std::isfinite(value) ? value + 0.0 : 0;
    out.append(text, std::to_chars(std::begin(text), std::end(text), written).ptr);
}

std::string NumberText(double value) {
    std::string text;
    AppendNumber(text, value);
    return text;
}

double RoundestWithin(double low, double high) {
    if (low <= 0 && high >= 0) return 0;
    const double middle = (low + high) / 2;
    for (int digits = 1; digits < kMostDigits; ++digits) {
        const double round = WithDigits(middle, digits);
        if (round >= low && round <= high) return round;
    }
    return middle;
}

double WithoutNoise(double value, double scale) {
    const double noise = std::max(std::abs(value), std::abs(scale) / 16) * kNoise;
    return std::isfinite(value) ? RoundestWithin(value - noise, value + noise) : 0;
}

std::string MatrixText(const MATRIX& m) {
    const double scale = std::max({std::abs(m.a), std::abs(m.b), std::abs(m.c), std::abs(m.d)});
    std::string text = "matrix(";
    for (const double element : {m.a, m.b, m.c, m.d}) {
        AppendNumber(text, WithoutNoise(element, scale));
        text += ' ';
    }
    AppendNumber(text, WithoutNoise(m.tx, scale));
    text += ' ';
    AppendNumber(text, WithoutNoise(m.ty, scale));
    return text += ')';
}

std::string ColorText(const ScreenColor& color) {
    const auto part = [](double share) {
        return static_cast<unsigned>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
    };
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", part(color.r), part(color.g), part(color.b));
    return text;
}

}  // namespace command
