#include "gfx/field_fold.h"

#include <bit>

namespace host::detail {
namespace {

class LockedBlock {
public:
    explicit LockedBlock(HMEM block) noexcept
        : m_block(block), m_data(MEMMANLock(block)), m_size(m_data ? MEMMANGetSize(block) : 0) {}
    ~LockedBlock() {
        if (m_data) MEMMANUnlock(m_block);
    }
    LockedBlock(const LockedBlock&) = delete;
    LockedBlock& operator=(const LockedBlock&) = delete;

    const void* Data() const noexcept { return m_data; }
    std::size_t Size() const noexcept { return m_size; }

private:
    HMEM m_block;
    void* m_data;
    std::size_t m_size;
};

}  // namespace

int CompareBlocks(HMEM a, HMEM b) noexcept {
    if (a == b) return 0;
    if (!a || !b) return a ? 1 : -1;
    const LockedBlock first(a), second(b);
    if (first.Size() != second.Size()) return first.Size() < second.Size() ? -1 : 1;
    return first.Size() == 0 ? 0 : std::memcmp(first.Data(), second.Data(), first.Size());
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
    Gather(locked.Size());
    HashBytes(m_hasher, locked.Data(), locked.Size());
}

}  // namespace host::detail
