#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fom/intern_node.h"

namespace VyrFOM {

/// A hash index over entries: open addressing with linear probing, at most three quarters full. Nothing is
/// allocated while it is empty. Locks are the caller's.
///
/// A slot holds the whole hash, so that what it does not lead to is not touched, and the entry's address: in
/// a large pool every step on the way to an entry is a load that misses the caches, and a table of numbers
/// would be one more. The slots' order is the order of the hashes, so that growing walks old and new slots
/// front to back.
///
/// Along a run of full slots the homes never go back (home: the slot that the hash asks for). A search
/// without a result ends where it meets a home behind its own; a removal shifts back what follows up to the
/// first entry that is at home, which most often is the next one.
class InternIndex {
public:
    static constexpr std::size_t kMaxEntries = 0x40000000u;

    /// Where a search has ended without a result: the place of an entry with its hash, as long as nothing
    /// else changes.
    struct Gap {
        std::size_t at = 0;
    };

    /// The entry with that hash that `isEqual` accepts, or null.
    template <class IsEqual>
    InternNode* Find(std::uint64_t hash, IsEqual&& isEqual) const {
        Gap gap;
        return m_used == 0 ? nullptr : Find(hash, isEqual, gap);
    }
    /// The same; requires room for one entry at least.
    template <class IsEqual>
    InternNode* Find(std::uint64_t hash, IsEqual&& isEqual, Gap& gap) const {
        std::size_t at = Home(hash);
        for (std::size_t fromHome = 0;; at = Next(at), ++fromHome) {
            const Slot& slot = m_slots[at];
            if (slot.hash == hash && slot.node && isEqual(static_cast<const InternNode&>(*slot.node)))
                return slot.node;
            if (IsAtLeastFromHome(at, fromHome)) continue;
            gap.at = at;
            return nullptr;
        }
    }

    /// Makes room for that many entries more, at least 1. Throws bad_alloc or length_error, with nothing
    /// changed.
    void Reserve(std::size_t more) {
        if (m_used + more > Limit(GetCapacity())) MakeRoom(more);
    }
    /// Requires room, and that the entry is not there.
    void Insert(std::uint64_t hash, InternNode& node) noexcept;
    void Insert(std::uint64_t hash, InternNode& node, Gap gap) noexcept;
    /// Requires that the entry is there under that hash.
    void Erase(std::uint64_t hash, const InternNode& node) noexcept;
    /// Starts loading the slot of that hash. Needs no lock: where another thread changes the index meanwhile,
    /// it loads the wrong memory or none, and nothing else happens.
    void Prefetch(std::uint64_t hash) const noexcept {
        const std::uintptr_t first = m_hint.slots.load(std::memory_order_relaxed);
        const unsigned shift = m_hint.shift.load(std::memory_order_relaxed);
        __builtin_prefetch(reinterpret_cast<const void*>(first + (hash >> shift) * sizeof(Slot)), 1);
    }
    /// Empties it and frees its memory.
    void Clear() noexcept;
    std::size_t GetUsed() const noexcept { return m_used; }
    std::size_t GetCapacity() const noexcept { return m_slots ? m_mask + 1 : 0; }

private:
    struct Slot {
        std::uint64_t hash;
        InternNode* node;  // null in an empty slot
    };

    std::size_t Home(std::uint64_t hash) const noexcept { return static_cast<std::size_t>(hash >> m_shift); }
    std::size_t Next(std::size_t at) const noexcept { return (at + 1) & m_mask; }
    std::size_t FromHome(std::size_t at) const noexcept { return (at - Home(m_slots[at].hash)) & m_mask; }
    /// Whether a full slot's entry is that far from its home or farther.
    bool IsAtLeastFromHome(std::size_t at, std::size_t distance) const noexcept {
        return m_slots[at].node && FromHome(at) >= distance;
    }
    static constexpr std::size_t Limit(std::size_t capacity) noexcept { return capacity / 4 * 3; }
    void MakeRoom(std::size_t more);
    void Grow(std::size_t capacity);
    void Install(std::unique_ptr<Slot[]> slots, std::size_t capacity) noexcept;

    std::unique_ptr<Slot[]> m_slots;
    std::size_t m_mask = 0;  // capacity minus 1
    unsigned m_shift = 0;
    std::size_t m_used = 0;
    struct {
        std::atomic<std::uintptr_t> slots{0};
        std::atomic<unsigned> shift{63};
    } m_hint;  // for Prefetch
};

}  // namespace VyrFOM
