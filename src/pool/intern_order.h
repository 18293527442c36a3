#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "fom/intern_node.h"

namespace VyrFOM {

/// The order of a pool, kept lazily: places in a sorted part and in an unsorted tail of what came since. What
/// is removed leaves a hole in either. Locks are the caller's.
///
///     | a . c d . f g |  z . b e  |   places
///     | 0 1 0 0 1 0 0 |  0 1 0 0  |   holes, a bit each
///      sorted            tail
///
/// Removal only sets a bit: the bits of a hundred thousand places lie in a few kilobytes that stay in the
/// caches, while the places themselves and the entries behind them do not. Holes are closed when the order is
/// made and, if they are many, instead of growing.
class InternOrder {
public:
    /// Negative, 0 or positive. Must not throw.
    using Compare = int (*)(const InternNode&, const InternNode&);

    /// Makes room for that many entries more, at least 1. Throws bad_alloc, with nothing changed, unless it
    /// finds the room in holes.
    void Reserve(std::size_t more) {
        const std::size_t room = std::min(m_nodes.capacity(), m_holes.size() * kBits);
        if (m_nodes.size() + more > room) MakeRoom(more);
    }
    /// Requires room. An entry that was removed from the tail gets its place back if that is still free.
    void Append(InternNode& node) noexcept;
    void Remove(const InternNode& node) noexcept;
    /// Whether nothing is to be sorted and the holes are not worth closing.
    bool IsSorted() const noexcept { return m_sorted == m_nodes.size() && !HasManyHoles(); }
    /// Whether the entry, which is here, is in the sorted part.
    bool IsInSortedPart(const InternNode& node) const noexcept { return node.m_place < m_sorted; }
    /// Brings the tail into order and closes the holes. Throws bad_alloc, with nothing changed.
    void Sort(Compare compare);
    /// The tail in order; nothing is allocated when it is empty.
    std::vector<InternNode*> SortedTail(Compare compare) const;
    /// Places of the sorted part, which comes first, and of all.
    std::size_t GetSortedSize() const noexcept { return m_sorted; }
    std::size_t GetSize() const noexcept { return m_nodes.size(); }
    /// Null for a hole.
    InternNode* At(std::size_t place) const noexcept { return IsHole(place) ? nullptr : m_nodes[place]; }
    /// Empties it and frees its memory.
    void Clear() noexcept;

private:
    static constexpr std::size_t kBits = 64;

    bool IsHole(std::size_t place) const noexcept {
        return (m_holes[place / kBits] >> place % kBits & 1) != 0;
    }
    bool HasManyHoles() const noexcept;
    void MakeRoom(std::size_t more);
    void Grow(std::size_t capacity);
    void CloseHoles() noexcept;
    std::size_t CloseHolesUnnumbered() noexcept;
    std::size_t MergeUnnumbered(const std::vector<InternNode*>& tail, Compare compare) noexcept;
    void Renumber(std::size_t from) noexcept;

    std::vector<InternNode*> m_nodes;    // a hole's is stale: its entry may be gone
    std::vector<std::uint64_t> m_holes;  // a bit for each place that m_nodes has room for
    std::size_t m_sorted = 0;
    std::size_t m_numHoles = 0;
};

}  // namespace VyrFOM
