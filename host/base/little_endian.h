#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

namespace host {

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
        static_assert(std::is_integral_v<T>);
        if (m_rest.size() < sizeof(T)) return false;
        std::uint64_t bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bits |= std::uint64_t{m_rest[i]} << (8 * i);
        value = static_cast<T>(bits);
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
        static_assert(std::is_integral_v<T>);
        for (std::size_t i = 0; i < sizeof(T); ++i)
            *m_to++ = static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> (8 * i));
    }

private:
    std::uint8_t* m_to;
};

}  // namespace host
