#include "pool/intern_index.h"

#include <bit>
#include <stdexcept>
#include <utility>

namespace VyrFOM {
namespace {

constexpr std::size_t kFirstCapacity = 16;

}  // namespace

void InternIndex::MakeRoom(std::size_t more) {
    std::size_t capacity = GetCapacity();
    if (more > kMaxEntries - m_used) throw std::length_error("pool: too many entries");
    do
        capacity = capacity == 0 ? kFirstCapacity : capacity * 2;
    while (m_used + more > Limit(capacity));
    Grow(capacity);
}

void InternIndex::Grow(std::size_t capacity) {
    auto slots = std::make_unique<Slot[]>(capacity);
    const std::size_t oldCapacity = GetCapacity();
    const std::unique_ptr<Slot[]> old = std::move(m_slots);
    Install(std::move(slots), capacity);
    for (std::size_t at = 0; at < oldCapacity; ++at)
        if (old[at].node) Insert(old[at].hash, *old[at].node);
}

/// Empty slots instead of what is there; 0 of them is none.
void InternIndex::Install(std::unique_ptr<Slot[]> slots, std::size_t capacity) noexcept {
    m_slots = std::move(slots);
    m_mask = capacity - 1;
    m_shift = capacity == 0 ? 63 : 64 - static_cast<unsigned>(std::countr_zero(capacity));
    m_used = 0;
    m_hint.slots.store(reinterpret_cast<std::uintptr_t>(m_slots.get()), std::memory_order_relaxed);
    m_hint.shift.store(m_shift, std::memory_order_relaxed);
}

void InternIndex::Insert(std::uint64_t hash, InternNode& node) noexcept {
    Gap gap;
    Find(
        hash, [](const InternNode&) { return false; }, gap);
    Insert(hash, node, gap);
}

void InternIndex::Insert(std::uint64_t hash, InternNode& node, Gap gap) noexcept {
    Slot moving{hash, &node};
    std::size_t at = gap.at;
    for (; m_slots[at].node; at = Next(at))
        std::swap(moving, m_slots[at]);
    m_slots[at] = moving;
    ++m_used;
}

// Shifts back what follows instead of leaving a mark: lookups never walk over the dead.
void InternIndex::Erase(std::uint64_t hash, const InternNode& node) noexcept {
    std::size_t gap = Home(hash);
    while (m_slots[gap].node != &node)
        gap = Next(gap);
    for (std::size_t at = Next(gap); IsAtLeastFromHome(at, 1); at = Next(at)) {
        m_slots[gap] = m_slots[at];
        gap = at;
    }
    m_slots[gap] = {0, nullptr};
    --m_used;
}

void InternIndex::Clear() noexcept {
    Install(nullptr, 0);
}

}  // namespace VyrFOM
