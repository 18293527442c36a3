#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "host/color/colorspec.h"

namespace host::detail {

/// The spaces in which models meet. A profile gives meaning to the first three; the last is absolute.
enum class Family : std::uint8_t { Rgb, Cmyk, Gray, Xyz };
inline constexpr std::size_t kFamilies = 4;

/// A colour as real numbers. Rgb, Cmyk and Gray: 0 to 1 (Rgb from a formula may leave it). Xyz: D65, white
/// has Y 1.
struct DeviceColor {
    Family family = Family::Rgb;
    std::array<double, 4> v{};
};

/// The family that a process model belongs to; nothing for other models.
std::optional<Family> FamilyOf(ClrModel model) noexcept;

/// The tint that thins `color`, 0 to 1: ink density of inks and named palettes times the density component.
double TintOf(const CLR_COLORSPEC& color) noexcept;

/// The appearance of `color` in its own family, tint applied; nothing when it has none. Stored components
/// outside their range count as the nearest that is inside (hues wrap).
std::optional<DeviceColor> Decode(const CLR_COLORSPEC& color) noexcept;

/// `color` in another family by the formulas.
DeviceColor ToFamily(const DeviceColor& color, Family family) noexcept;

/// A plain colour of process model `model`, whose family `color` must have; clipped to the model's range and
/// rounded half away from zero.
CLR_COLORSPEC Encode(const DeviceColor& color, ClrModel model) noexcept;

/// Rounds half away from zero after clamping; what lies within 1e-9 of a half counts as the half, so that
/// results do not hang on the last bit of a floating-point product. NaN becomes `low`.
inline int Quantise(double value, int low, int high) noexcept {
    constexpr double kHalf = 0.5 + 1e-9;
    if (!(value > low)) return low;
    if (value >= high) return high;
    return value < 0 ? -static_cast<int>(kHalf - value) : static_cast<int>(value + kHalf);
}

}  // namespace host::detail
