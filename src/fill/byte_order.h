#pragma once

#include <concepts>
#include <cstring>
#include <type_traits>

namespace VyrFOM {

/// Values whose bytes are all there is to them: equal values have equal bytes.
template <class T>
concept PlainBytes = std::is_trivially_copyable_v<T> &&
    (std::has_unique_object_representations_v<T> || std::same_as<T, double>);

/// The first byte that differs decides, as an unsigned number. Negative, 0 or positive.
template <PlainBytes T>
int CompareBytes(const T& a, const T& b) noexcept {
    return std::memcmp(&a, &b, sizeof(T));
}

/// -1, 0 or 1.
template <std::totally_ordered T>
int CompareValues(T a, T b) noexcept {
    return a < b ? -1 : b < a ? 1 : 0;
}

}  // namespace VyrFOM
