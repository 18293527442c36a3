#pragma once

#include "color/matrix3.h"

namespace host::detail {

/// Encoded sRGB from D65 XYZ and back, extended beyond 0 to 1 by odd symmetry, so that colours out of gamut
/// survive the way through.
Vector3 RgbFromXyz(const Vector3& xyz) noexcept;
Vector3 XyzFromRgb(const Vector3& rgb) noexcept;

/// L* 0 to 100, a* and b*, relative to the D65 white of sRGB.
Vector3 LabFromXyz(const Vector3& xyz) noexcept;
Vector3 XyzFromLab(const Vector3& lab) noexcept;

/// CIELAB relative to D50, as profiles use it, from D65 XYZ and back (Bradford adaptation).
Vector3 LabD50FromXyz(const Vector3& xyz) noexcept;
Vector3 XyzFromLabD50(const Vector3& lab) noexcept;

/// XYZ of white: sRGB 1, 1, 1.
const Vector3& WhiteXyz() noexcept;

}  // namespace host::detail
