#pragma once

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
class InternIndex {
public:
    static constexpr std::size_t kMaxEntries = 0x40000000u;

    /// The entry with that hash that `isEqual` accepts, or null.
    template <class IsEqual>
    InternNode* Find(std::uint64_t hash, IsEqual&& isEqual) const {
        if (m_used == 0) return nullptr;
        for (std::size_t at = Home(hash); m_slots[at].node; at = Next(at))
            if (m_slots[at].hash == hash && isEqual(static_cast<const InternNode&>(*m_slots[at].node)))
                return m_slots[at].node;
        return nullptr;
    }

    /// Makes room for one entry more. Throws bad_alloc or length_error, with nothing changed.
    void ReserveOne();
    /// Requires room, and that the entry is not there.
    void Insert(std::uint64_t hash, InternNode& node) noexcept;
    /// Requires that the entry is there under that hash.
    void Erase(std::uint64_t hash, const InternNode& node) noexcept;
    /// Starts loading the slot of that hash.
    void Prefetch(std::uint64_t hash) const noexcept {
        if (m_used != 0) __builtin_prefetch(&m_slots[Home(hash)], 1);
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
    void Grow(std::size_t capacity);

    std::unique_ptr<Slot[]> m_slots;
    std::size_t m_mask = 0;  // capacity minus 1
    unsigned m_shift = 0;
    std::size_t m_used = 0;
};

}  // namespace VyrFOM
