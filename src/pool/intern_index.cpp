#include "pool/intern_index.h"

#include <bit>
#include <stdexcept>
#include <utility>

namespace VyrFOM {
namespace {

constexpr std::size_t kFirstCapacity = 16;

}  // namespace

void InternIndex::ReserveOne() {
    const std::size_t capacity = GetCapacity();
    if (m_used < capacity / 4 * 3) return;
    if (m_used >= kMaxEntries) throw std::length_error("pool: too many entries");
    Grow(capacity == 0 ? kFirstCapacity : capacity * 2);
}

void InternIndex::Grow(std::size_t capacity) {
    InternIndex larger;
    larger.m_slots = std::make_unique<Slot[]>(capacity);
    larger.m_mask = capacity - 1;
    larger.m_shift = 64 - static_cast<unsigned>(std::countr_zero(capacity));
    for (std::size_t at = 0; at < GetCapacity(); ++at)
        if (m_slots[at].node) larger.Insert(m_slots[at].hash, *m_slots[at].node);
    *this = std::move(larger);
}

void InternIndex::Insert(std::uint64_t hash, InternNode& node) noexcept {
    std::size_t at = Home(hash);
    while (m_slots[at].node)
        at = Next(at);
    m_slots[at] = {hash, &node};
    ++m_used;
}

// Shifts back what follows instead of leaving a mark: lookups never walk over the dead. An entry may move
// into the gap when its home does not lie behind the gap, counted along the probe sequence.
void InternIndex::Erase(std::uint64_t hash, const InternNode& node) noexcept {
    std::size_t gap = Home(hash);
    while (m_slots[gap].node != &node)
        gap = Next(gap);
    for (std::size_t at = Next(gap); m_slots[at].node; at = Next(at)) {
        const std::size_t fromHome = (at - Home(m_slots[at].hash)) & m_mask;
        const std::size_t fromGap = (at - gap) & m_mask;
        if (fromHome < fromGap) continue;
        m_slots[gap] = m_slots[at];
        gap = at;
    }
    m_slots[gap] = {0, nullptr};
    --m_used;
}

void InternIndex::Clear() noexcept {
    *this = InternIndex();
}

}  // namespace VyrFOM
