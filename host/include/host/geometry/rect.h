#pragma once

#include <cstdint>

/// Integer points and rectangles in document units (a tenth of a micrometre).
struct tagPOINT {
    std::int32_t x = 0, y = 0;
    friend bool operator==(const tagPOINT&, const tagPOINT&) = default;
};
using POINT = tagPOINT;

struct tagRECT {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
    friend bool operator==(const tagRECT&, const tagRECT&) = default;
};
using RECT = tagRECT;

namespace VyrMath {
/// A rectangle by its edges. The default is empty.
template <class T>
struct BoundsT {
    T left{}, top{}, right{}, bottom{};
    bool IsEmpty() const noexcept { return !(left < right && top < bottom); }
    friend bool operator==(const BoundsT&, const BoundsT&) = default;
};
/// The unit square: what relative geometry is measured against when there is no object.
inline constexpr BoundsT<double> IdentityBounds{0, 0, 1, 1};
}  // namespace VyrMath
