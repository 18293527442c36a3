#include "host/base/md5.h"

#include <bit>
#include <cstring>
#include <utility>

namespace host {
namespace {

using State = std::array<std::uint32_t, 4>;

// The integer part of 2^32 * |sin(i + 1)|.
constexpr std::uint32_t kSines[64] = {
    0xD76AA478, 0xE8C7B756, 0x242070DB, 0xC1BDCEEE, 0xF57C0FAF, 0x4787C62A, 0xA8304613, 0xFD469501,
    0x698098D8, 0x8B44F7AF, 0xFFFF5BB1, 0x895CD7BE, 0x6B901122, 0xFD987193, 0xA679438E, 0x49B40821,
    0xF61E2562, 0xC040B340, 0x265E5A51, 0xE9B6C7AA, 0xD62F105D, 0x02441453, 0xD8A1E681, 0xE7D3FBC8,
    0x21E1CDE6, 0xC33707D6, 0xF4D50D87, 0x455A14ED, 0xA9E3E905, 0xFCEFA3F8, 0x676F02D9, 0x8D2A4C8A,
    0xFFFA3942, 0x8771F681, 0x6D9D6122, 0xFDE5380C, 0xA4BEEA44, 0x4BDECFA9, 0xF6BB4B60, 0xBEBFBC70,
    0x289B7EC6, 0xEAA127FA, 0xD4EF3085, 0x04881D05, 0xD9D4D039, 0xE6DB99E5, 0x1FA27CF8, 0xC4AC5665,
    0xF4292244, 0x432AFF97, 0xAB9423A7, 0xFC93A039, 0x655B59C3, 0x8F0CCC92, 0xFFEFF47D, 0x85845DD1,
    0x6FA87E4F, 0xFE2CE6E0, 0xA3014314, 0x4E0811A1, 0xF7537E82, 0xBD3AF235, 0x2AD7D2BB, 0xEB86D391,
};
constexpr int kShifts[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
constexpr unsigned kWordFactor[4] = {1, 5, 3, 7};
constexpr unsigned kWordOffset[4] = {0, 1, 5, 0};

/// One unaligned load where the machine is little-endian.
std::uint32_t LoadWord(const std::uint8_t* at) noexcept {
    return static_cast<std::uint32_t>(at[0]) | static_cast<std::uint32_t>(at[1]) << 8 |
           static_cast<std::uint32_t>(at[2]) << 16 | static_cast<std::uint32_t>(at[3]) << 24;
}

/// Step I of the 64. Each needs the `b` of the one before, so what does not depend on `b` is added first: the
/// chain between two steps is what decides the speed. In the second round the two halves of the function
/// share no bit and are added one after the other for the same reason.
template <unsigned I>
void Step(State& s, const std::uint8_t* block) noexcept {
    constexpr unsigned kRound = I / 16;
    std::uint32_t& a = s[(64 - I) % 4];
    const std::uint32_t b = s[(65 - I) % 4];
    const std::uint32_t c = s[(66 - I) % 4];
    const std::uint32_t d = s[(67 - I) % 4];
    a += LoadWord(block + 4 * ((kWordFactor[kRound] * I + kWordOffset[kRound]) % 16)) + kSines[I];
    if constexpr (kRound == 0) {
        a += d ^ (b & (c ^ d));
    } else if constexpr (kRound == 1) {
        a += c & ~d;
        a += b & d;
    } else if constexpr (kRound == 2) {
        a += (c ^ d) ^ b;
    } else {
        a += c ^ (b | ~d);
    }
    a = b + std::rotl(a, kShifts[kRound][I % 4]);
}

template <unsigned... I>
void Transform(State& s, const std::uint8_t* block, std::integer_sequence<unsigned, I...>) noexcept {
    (Step<I>(s, block), ...);
}

void AddBlocks(State& state, const std::uint8_t* blocks, std::size_t count) noexcept {
    State sum = state;
    for (; count != 0; --count, blocks += 64) {
        State s = sum;
        Transform(s, blocks, std::make_integer_sequence<unsigned, 64>());
        for (std::size_t i = 0; i < 4; ++i)
            sum[i] += s[i];
    }
    state = sum;
}

}  // namespace

void Md5::Update(const void* data, std::size_t size) noexcept {
    if (size == 0) return;
    const auto* at = static_cast<const std::uint8_t*>(data);
    const auto waiting = static_cast<std::size_t>(m_length % kBlock);
    m_length += size;
    if (waiting != 0) {
        const std::size_t missing = kBlock - waiting;
        if (size < missing) {
            std::memcpy(m_rest.data() + waiting, at, size);
            return;
        }
        std::memcpy(m_rest.data() + waiting, at, missing);
        AddBlocks(m_state, m_rest.data(), 1);
        at += missing;
        size -= missing;
    }
    AddBlocks(m_state, at, size / kBlock);
    std::memcpy(m_rest.data(), at + size / kBlock * kBlock, size % kBlock);
}

Md5::Digest Md5::Finish() noexcept {
    static constexpr std::uint8_t kPadding[kBlock] = {0x80};
    const std::uint64_t bits = m_length * 8;
    const auto waiting = static_cast<std::size_t>(m_length % kBlock);
    Update(kPadding, waiting < 56 ? 56 - waiting : 120 - waiting);
    std::array<std::uint8_t, 8> count;
    for (unsigned i = 0; i < 8; ++i)
        count[i] = static_cast<std::uint8_t>(bits >> (8 * i));
    Update(count.data(), count.size());
    Digest digest;
    for (unsigned i = 0; i < 16; ++i)
        digest[i] = static_cast<std::uint8_t>(m_state[i / 4] >> (8 * (i % 4)));
    return digest;
}

}  // namespace host
