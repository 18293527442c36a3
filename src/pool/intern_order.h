#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fom/intern_node.h"

namespace VyrFOM {

/// The order of a pool, kept lazily: a sorted part, in which removed entries leave holes, and an unsorted
/// tail of what came since. Locks are the caller's.
///
///     | a . c d . f g |  z b e  |
///      sorted, 2 holes   tail
class InternOrder {
public:
    /// Negative, 0 or positive. Must not throw.
    using Compare = int (*)(const InternNode&, const InternNode&);

    /// Makes room for one entry more. Throws bad_alloc, with nothing changed.
    void ReserveOne();
    /// Requires room.
    void Append(InternNode& node) noexcept;
    /// Constant time, amortised: closes the holes when they outnumber the entries.
    void Remove(const InternNode& node) noexcept;
    /// Starts loading the entry's place.
    void Prefetch(const InternNode& node) const noexcept {
        if (node.m_place < m_nodes.size()) __builtin_prefetch(&m_nodes[node.m_place], 1);
    }
    bool IsSorted() const noexcept { return m_sorted == m_nodes.size(); }
    /// Brings the tail into order. Throws bad_alloc, with nothing changed.
    void Sort(Compare compare);
    /// The tail in order; empty, and nothing is allocated, when all is sorted.
    std::vector<InternNode*> SortedTail(Compare compare) const;
    /// The sorted part, with null for a hole.
    const InternNode* const* SortedBegin() const noexcept { return m_nodes.data(); }
    const InternNode* const* SortedEnd() const noexcept { return m_nodes.data() + m_sorted; }
    /// Any order; null for a hole.
    const std::vector<InternNode*>& All() const noexcept { return m_nodes; }
    /// Empties it and frees its memory.
    void Clear() noexcept;

private:
    void CloseHoles() noexcept;
    void Merge(const std::vector<InternNode*>& tail, Compare compare) noexcept;
    void Renumber(std::size_t from) noexcept;

    std::vector<InternNode*> m_nodes;
    std::size_t m_sorted = 0;
    std::size_t m_holes = 0;  // in the sorted part; the tail has none
};

}  // namespace VyrFOM
