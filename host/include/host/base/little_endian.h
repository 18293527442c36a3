#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace host {

/// The number that `from` holds, little-endian; `from` has sizeof(T) bytes.
template <class T>
T LoadLittle(const std::uint8_t* from) noexcept {
    static_assert(std::is_integral_v<T> && !std::is_same_v<T, bool>);
    if constexpr (std::endian::native == std::endian::little || sizeof(T) == 1) {
        T value;
        std::memcpy(&value, from, sizeof value);
        return value;
    } else {
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bits |= std::uint64_t{from[i]} << (8 * i);
        return static_cast<T>(bits);
    }
}

/// Writes `value` little-endian. Returns the place behind it; `to` has room for sizeof(T) bytes.
template <class T>
std::uint8_t* StoreLittle(std::uint8_t* to, T value) noexcept {
    static_assert(std::is_integral_v<T> && !std::is_same_v<T, bool>);
    if constexpr (std::endian::native == std::endian::little || sizeof(T) == 1) {
        std::memcpy(to, &value, sizeof value);
    } else {
        for (std::size_t i = 0; i < sizeof(T); ++i)
            to[i] = static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i));
    }
    return to + sizeof(T);
}

/// Reads numbers, little-endian, one after the other from bytes that belong to somebody else.
class LittleReader {
public:
    explicit LittleReader(std::span<const std::uint8_t> bytes) noexcept : m_rest(bytes) {}

    std::size_t Remaining() const noexcept { return m_rest.size(); }
    /// False, the place as it was, when fewer bytes are left.
    bool Skip(std::size_t size) noexcept {
        if (size > m_rest.size()) return false;
        m_rest = m_rest.subspan(size);
        return true;
    }
    /// False, the place and `value` as they were, when fewer bytes are left.
    template <class T>
    bool Read(T& value) noexcept {
        if (m_rest.size() < sizeof(T)) return false;
        value = LoadLittle<T>(m_rest.data());
        return Skip(sizeof(T));
    }

private:
    std::span<const std::uint8_t> m_rest;
};

/// Writes numbers, little-endian, one after the other to a place that has room for all of them.
class LittleWriter {
public:
    explicit LittleWriter(std::uint8_t* to) noexcept : m_to(to) {}

    template <class T>
    void Write(T value) noexcept {
        m_to = StoreLittle(m_to, value);
    }

private:
    std::uint8_t* m_to;
};

}  // namespace host
