#pragma once

#include <array>

#include "color/matrix3.h"

namespace host::detail {

// Everything here is 0 to 1 in and out, hues in degrees from 0 up to 360. Colours are red, green, blue.

using Cmyk = std::array<double, 4>;

Vector3 Clipped(const Vector3& rgb) noexcept;

/// Black takes over all that the three inks share.
Cmyk CmykFromRgb(const Vector3& rgb) noexcept;
Vector3 RgbFromCmyk(const Cmyk& cmyk) noexcept;

/// Luma by the weights 0.299, 0.587 and 0.114 of the encoded components.
double GrayFromRgb(const Vector3& rgb) noexcept;

/// Hue, saturation, brightness; hue and saturation 0 for greys.
Vector3 HsbFromRgb(const Vector3& rgb) noexcept;
Vector3 RgbFromHsb(const Vector3& hsb) noexcept;

/// Hue, lightness, saturation; hue and saturation 0 for greys.
Vector3 HlsFromRgb(const Vector3& rgb) noexcept;
Vector3 RgbFromHls(const Vector3& hls) noexcept;

/// Y 0 to 1; I and Q from -1 to 1, the largest that a colour can have.
Vector3 YiqFromRgb(const Vector3& rgb) noexcept;
Vector3 RgbFromYiq(const Vector3& yiq) noexcept;

/// Orange, yellow, magenta, cyan, green, black. Orange prints as yellow with half as much magenta, green as
/// cyan and yellow; nothing is separated into orange or green.
using Oymcgk = std::array<double, 6>;
Cmyk CmykFromHexachrome(const Oymcgk& inks) noexcept;
Oymcgk HexachromeFromCmyk(const Cmyk& cmyk) noexcept;

}  // namespace host::detail
