#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>

#include "host/base/guid.h"
#include "host/base/little_endian.h"
#include "host/color/colorspec.h"
#include "host/color/fountcolor.h"
#include "host/color/screenspec.h"
#include "host/geometry/matrix.h"
#include "host/geometry/rect.h"
#include "host/gfx/variable_attribute.h"

/// Values of fixed layout: their numbers one after the other, without gaps.
namespace host::detail {

/// One run of equal numbers after another.
template <class A, std::size_t n, class B, std::size_t m>
struct TwoRuns {
    std::array<A, n> first;
    std::array<B, m> second;
};

/// `Packed<T>::Parts`, a type of T's size: the numbers that a T consists of, in stored order.
template <class T>
struct Packed;

template <class T>
concept IsPacked = requires {
    typename Packed<T>::Parts;
};

template <class T>
requires std::integral<T> || std::is_enum_v<T>
struct Packed<T> {
    static constexpr auto Part() {
        if constexpr (std::is_enum_v<T>)
            return std::underlying_type_t<T>();
        else if constexpr (std::same_as<T, bool>)
            return std::uint8_t();
        else
            return T();
    }
    using Parts = std::array<decltype(Part()), 1>;
};
template <>
struct Packed<double> {
    using Parts = std::array<std::uint64_t, 1>;
};
template <>
struct Packed<VECTOR2D> {
    using Parts = std::array<std::uint64_t, 2>;
};
template <>
struct Packed<MATRIX> {
    using Parts = std::array<std::uint64_t, 6>;
};
template <>
struct Packed<CGE_VARIABLEPOINT> {
    using Parts = std::array<std::uint64_t, 3>;
};
template <>
struct Packed<POINT> {
    using Parts = std::array<std::uint32_t, 2>;
};
template <>
struct Packed<RECT> {
    using Parts = std::array<std::uint32_t, 4>;
};
template <>
struct Packed<CLR_SCREENSPEC> {
    using Parts = TwoRuns<std::uint16_t, 2, std::uint32_t, 3>;
};
template <>
struct Packed<VyrUtils::Guid> {
    using Parts = std::array<std::uint8_t, 16>;
};
template <std::integral U, std::size_t n>
struct Packed<std::array<U, n>> {
    using Parts = std::array<U, n>;
};

/// Colours: the second run, the identity block, is left off where it is all zero.
template <>
struct Packed<CLR_COLORSPEC> {
    using Parts = TwoRuns<std::uint16_t, 8, std::uint8_t, 16>;
    static constexpr std::size_t kShortSize = sizeof(Parts::first);
};
template <>
struct Packed<CLR_FOUNTCOLOR> {
    using Parts = TwoRuns<std::uint16_t, 10, std::uint8_t, 16>;
    static constexpr std::size_t kShortSize = sizeof(Parts::first);
};

/// Values that have a short form.
template <class T>
concept HasShortForm = IsPacked<T> && requires {
    Packed<T>::kShortSize;
};

/// Bytes decide, as in FieldCompare.
template <IsPacked T>
bool HasSameBytes(const T& a, const T& b) noexcept {
    if constexpr (sizeof(T) <= sizeof(std::uint64_t) || sizeof(T) % sizeof(std::uint64_t) != 0) {
        return std::memcmp(&a, &b, sizeof(T)) == 0;
    } else {
        using Words = std::array<std::uint64_t, sizeof(T) / sizeof(std::uint64_t)>;
        const Words x = std::bit_cast<Words>(a), y = std::bit_cast<Words>(b);
        std::uint64_t different = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            different |= x[i] ^ y[i];
        return different == 0;
    }
}

template <class U, std::size_t n>
std::uint8_t* StoreRun(std::uint8_t* at, const std::array<U, n>& run) noexcept {
    for (const U number : run)
        at = StoreLittle(at, number);
    return at;
}
template <class U, std::size_t n>
const std::uint8_t* LoadRun(const std::uint8_t* at, std::array<U, n>& run) noexcept {
    for (U& number : run) {
        number = LoadLittle<U>(at);
        at += sizeof(U);
    }
    return at;
}

/// Writes sizeof(T) bytes. Returns the place behind them.
template <IsPacked T>
std::uint8_t* StorePacked(std::uint8_t* at, const T& value) noexcept {
    const auto parts = std::bit_cast<typename Packed<T>::Parts>(value);
    if constexpr (requires { parts.second; })
        return StoreRun(StoreRun(at, parts.first), parts.second);
    else
        return StoreRun(at, parts);
}
template <IsPacked T>
void LoadPacked(const std::uint8_t* at, T& value) noexcept {
    if constexpr (std::same_as<T, bool>) {
        value = *at != 0;
    } else {
        typename Packed<T>::Parts parts;
        if constexpr (requires { parts.second; })
            LoadRun(LoadRun(at, parts.first), parts.second);
        else
            LoadRun(at, parts);
        value = std::bit_cast<T>(parts);
    }
}

/// Whether nothing of the value would be lost by its short form.
template <HasShortForm T>
bool FitsShortForm(const T& value) noexcept {
    const auto identity = std::bit_cast<typename Packed<T>::Parts>(value).second;
    return HasSameBytes(identity, decltype(identity){});
}
template <HasShortForm T>
std::uint8_t* StoreShort(std::uint8_t* at, const T& value) noexcept {
    return StoreRun(at, std::bit_cast<typename Packed<T>::Parts>(value).first);
}
template <HasShortForm T>
void LoadShort(const std::uint8_t* at, T& value) noexcept {
    typename Packed<T>::Parts parts{};
    LoadRun(at, parts.first);
    value = std::bit_cast<T>(parts);
}

}  // namespace host::detail
