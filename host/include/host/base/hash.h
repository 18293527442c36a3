#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace host {

/// Accumulates a 64-bit hash word by word. Not stored anywhere: the function may change between builds.
class Hasher {
public:
    explicit constexpr Hasher(std::uint64_t seed = 0x9E3779B97F4A7C15u) noexcept : m_state(seed) {}

    void Word(std::uint64_t word) noexcept {
        std::uint64_t x = (m_state ^ word) * 0xD6E8FEB86659FD93u;
        m_state = std::rotl(x ^ (x >> 32), 23) + 0x2545F4914F6CDD1Du;
    }
    void Bytes(const void* data, std::size_t size) noexcept {
        const auto* at = static_cast<const unsigned char*>(data);
        for (; size >= 8; size -= 8, at += 8) {
            std::uint64_t word;
            std::memcpy(&word, at, 8);
            Word(word);
        }
        if (size != 0) {
            std::uint64_t word = 0;
            std::memcpy(&word, at, size);
            Word(word | (static_cast<std::uint64_t>(size) << 56));
        }
    }
    /// The bits decide: NaNs with the same bits are equal, 0.0 and -0.0 are not.
    void Double(double value) noexcept { Word(std::bit_cast<std::uint64_t>(value)); }

    std::uint64_t Finish() const noexcept {
        std::uint64_t x = m_state;
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
        return x ^ (x >> 31);
    }

private:
    std::uint64_t m_state;
};

}  // namespace host
