#include "host/base/guid.h"

#include <atomic>
#include <bit>
#include <chrono>
#include <exception>
#include <random>

namespace VyrUtils {
namespace {

constexpr int kTextDigits = 32;

/// A generator per thread (xoshiro256++): no lock and no call of the system for an identifier. All zero,
/// which the generator never reaches, is "not seeded yet"; nothing to construct or destroy.
struct Random {
    std::uint64_t state[4];

    std::uint64_t Next() noexcept {
        const std::uint64_t result = std::rotl(state[0] + state[3], 23) + state[0];
        const std::uint64_t shifted = state[1] << 17;
        state[2] ^= state[0];
        state[3] ^= state[1];
        state[1] ^= state[2];
        state[0] ^= state[3];
        state[2] ^= shifted;
        state[3] = std::rotl(state[3], 45);
        return result;
    }
};

constinit thread_local Random t_random{};

std::uint64_t SystemRandom() noexcept {
    try {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device();
    } catch (const std::exception&) {
        return static_cast<std::uint64_t>(
            std::chrono::high_resolution_clock::now().time_since_epoch().count());
    }
}

// The count of seeded threads goes into every seed: two threads never share one, even where the system's
// source is poor.
void Seed(Random& random) noexcept {
    static constinit std::atomic<std::uint64_t> s_threads{0};
    random.state[0] = SystemRandom();
    random.state[1] = SystemRandom();
    random.state[2] = SystemRandom();
    random.state[3] = 1 + s_threads.fetch_add(1, std::memory_order_relaxed);
    for (int i = 0; i < 16; ++i)
        random.Next();
}

void PutWord(std::array<std::uint8_t, 16>& bytes, std::size_t at, std::uint64_t word) noexcept {
    for (std::size_t i = 0; i < 8; ++i)
        bytes[at + i] = static_cast<std::uint8_t>(word >> (8 * i));
}

int HexDigit(wchar_t c) noexcept {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

constexpr bool HasDashBefore(int digit) noexcept {
    return digit == 8 || digit == 12 || digit == 16 || digit == 20;
}

}  // namespace

Guid Guid::Generate() {
    Random& random = t_random;
    if (random.state[0] == 0 && random.state[1] == 0 && random.state[2] == 0 && random.state[3] == 0)
        Seed(random);
    std::array<std::uint8_t, 16> bytes;
    PutWord(bytes, 0, random.Next());
    PutWord(bytes, 8, random.Next());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    return Guid(bytes);
}

std::optional<Guid> Guid::Parse(std::wstring_view text) noexcept {
    if (text.size() >= 2 && text.front() == L'{' && text.back() == L'}')
        text = text.substr(1, text.size() - 2);
    if (text.size() != kTextDigits + 4) return std::nullopt;
    std::array<std::uint8_t, 16> bytes{};
    for (int digit = 0; digit < kTextDigits; ++digit) {
        if (HasDashBefore(digit)) {
            if (text.front() != L'-') return std::nullopt;
            text.remove_prefix(1);
        }
        const int value = HexDigit(text.front());
        if (value < 0) return std::nullopt;
        text.remove_prefix(1);
        std::uint8_t& byte = bytes[static_cast<std::size_t>(digit / 2)];
        byte = static_cast<std::uint8_t>((byte << 4) | value);
    }
    return Guid(bytes);
}

bool Guid::IsNil() const noexcept {
    return *this == Guid();
}

VyrPlatform::VyrStringT<wchar_t> Guid::ToString() const {
    std::wstring text;
    text.reserve(kTextDigits + 4);
    for (int digit = 0; digit < kTextDigits; ++digit) {
        if (HasDashBefore(digit)) text.push_back(L'-');
        const std::uint8_t byte = m_bytes[static_cast<std::size_t>(digit / 2)];
        text.push_back(L"0123456789abcdef"[digit % 2 == 0 ? byte >> 4 : byte & 0x0F]);
    }
    return text;
}

}  // namespace VyrUtils
