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

void HashBytes(Hasher& hasher, const void* data, std::size_t size) noexcept {
    constexpr std::size_t kLanes = 4, kStep = kLanes * sizeof(std::uint64_t);
    constexpr std::uint64_t kFactor = 0x9FB21C651E98DF25u;
    if (size == 0) return;
    std::uint64_t lane[kLanes] = {size, 1, 2, 3};
    const auto mix = [&lane](const std::uint64_t(&word)[kLanes]) {
        for (std::size_t i = 0; i < kLanes; ++i)
            lane[i] = std::rotl((lane[i] ^ word[i]) * kFactor, 31);
    };
    const auto* at = static_cast<const unsigned char*>(data);
    const std::size_t tail = size % kStep;
    for (const auto* const end = at + (size - tail); at != end; at += kStep) {
        std::uint64_t word[kLanes];
        std::memcpy(word, at, kStep);
        mix(word);
    }
    if (tail != 0) {
        std::uint64_t word[kLanes] = {};
        std::memcpy(word, at, tail);
        mix(word);
    }
    hasher.Word(lane[0] * kFactor ^ std::rotl(lane[1], 23));
    hasher.Word(lane[2] * kFactor ^ std::rotl(lane[3], 23));
}

void FieldHash::operator()(HMEM block) noexcept {
    Gather(block != nullptr);
    if (!block) return;
    const LockedBlock locked(block);
    Gather(locked.Bytes().size());
    HashBytes(m_hasher, locked.Bytes().data(), locked.Bytes().size());
}

}  // namespace host::detail
