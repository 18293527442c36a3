#include "gfx/field_fold.h"

#include <bit>

#include "base/locked_block.h"

namespace host::detail {

int CompareBlocks(HMEM a, HMEM b) noexcept {
    if (a == b) return 0;
    if (!a || !b) return a ? 1 : -1;
    const LockedBlock first(a), second(b);
    const std::size_t size = first.Bytes().size();
    if (size != second.Bytes().size()) return size < second.Bytes().size() ? -1 : 1;
    return size == 0 ? 0 : std::memcmp(first.Bytes().data(), second.Bytes().data(), size);
}

// The lanes are four variables and no array: the compiler keeps them in registers then.
void HashBytes(Hasher& hasher, const void* data, std::size_t size) noexcept {
    constexpr std::size_t kStep = 4 * sizeof(std::uint64_t);
    constexpr std::uint64_t kFactor = 0x9FB21C651E98DF25u;
    if (size == 0) return;
    std::uint64_t lane0 = size, lane1 = 1, lane2 = 2, lane3 = 3;
    const auto mix = [&](const unsigned char* at) {
        std::uint64_t word[4];
        std::memcpy(word, at, kStep);
        lane0 = std::rotl((lane0 ^ word[0]) * kFactor, 31);
        lane1 = std::rotl((lane1 ^ word[1]) * kFactor, 31);
        lane2 = std::rotl((lane2 ^ word[2]) * kFactor, 31);
        lane3 = std::rotl((lane3 ^ word[3]) * kFactor, 31);
    };
    const auto* at = static_cast<const unsigned char*>(data);
    const std::size_t tail = size % kStep;
    for (const auto* const end = at + (size - tail); at != end; at += kStep)
        mix(at);
    if (tail != 0) {
        unsigned char last[kStep] = {};
        std::memcpy(last, at, tail);
        mix(last);
    }
    hasher.Word(lane0 * kFactor ^ std::rotl(lane1, 23));
    hasher.Word(lane2 * kFactor ^ std::rotl(lane3, 23));
}

void FieldHash::GatherContents(HMEM block) noexcept {
    const LockedBlock locked(block);
    Gather(locked.Bytes().size());
    HashBytes(m_hasher, locked.Bytes().data(), locked.Bytes().size());
}

}  // namespace host::detail
