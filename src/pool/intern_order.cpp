#include "pool/intern_order.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <new>

namespace VyrFOM {
namespace {

constexpr std::size_t kFirstCapacity = 16;
constexpr std::size_t kToleratedHoles = 32;

/// The first of the sorted [begin, end) that comes after `node`, searched from the end in growing steps: near
/// the end it takes one comparison, so that merging n into m costs no more than n + m of them and, for few
/// new ones, about 2 n log(m / n).
InternNode** UpperBoundFromEnd(InternNode** begin, InternNode** end, const InternNode& node,
                               InternOrder::Compare compare) noexcept {
    InternNode** after = end;
    for (std::ptrdiff_t step = 1; after != begin; step *= 2) {
        InternNode** probe = after - std::min(step, after - begin);
        if (compare(**probe, node) <= 0) {
            begin = probe + 1;
            break;
        }
        after = probe;
    }
    return std::upper_bound(begin, after, &node, [compare](const InternNode* a, const InternNode* b) {
        return compare(*a, *b) < 0;
    });
}

}  // namespace

bool InternOrder::HasManyHoles() const noexcept {
    return m_numHoles > kToleratedHoles && m_numHoles > m_nodes.size() / 2;
}

// Closing half as many holes as there are places makes room for as many entries as it moves: constant work
// for each on average, and no more than twice the places that the entries need.
void InternOrder::MakeRoom(std::size_t more) {
    const std::size_t needed = m_nodes.size() + more;
    if (HasManyHoles() && more <= m_numHoles) return CloseHoles();
    try {
        Grow(std::max({kFirstCapacity, needed, 2 * m_nodes.size()}));
    } catch (const std::bad_alloc&) {
        if (more > m_numHoles) throw;
        CloseHoles();
    }
}

void InternOrder::Grow(std::size_t capacity) {
    m_holes.resize((capacity + kBits - 1) / kBits);
    m_nodes.reserve(capacity);
}

void InternOrder::Append(InternNode& node) noexcept {
    const std::size_t place = node.m_place;
    if (place >= m_sorted && place < m_nodes.size() && IsHole(place)) {
        m_nodes[place] = &node;
        m_holes[place / kBits] &= ~(std::uint64_t{1} << place % kBits);
        --m_numHoles;
        return;
    }
    assert(m_nodes.size() < m_nodes.capacity());
    node.m_place = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.push_back(&node);
}

void InternOrder::Remove(const InternNode& node) noexcept {
    const std::size_t place = node.m_place;
    if (place + 1 == m_nodes.size()) {
        m_nodes.pop_back();
        m_sorted = std::min(m_sorted, place);
        return;
    }
    m_holes[place / kBits] |= std::uint64_t{1} << place % kBits;
    ++m_numHoles;
}

void InternOrder::CloseHoles() noexcept {
    Renumber(CloseHolesUnnumbered());
}

/// The first place whose entry has moved.
std::size_t InternOrder::CloseHolesUnnumbered() noexcept {
    if (m_numHoles == 0) return m_nodes.size();
    std::size_t word = 0;
    while (m_holes[word] == 0)
        ++word;
    const std::size_t first = word * kBits + static_cast<std::size_t>(std::countr_zero(m_holes[word]));
    std::size_t to = first;
    std::size_t sorted = std::min(first, m_sorted);
    for (std::size_t place = first; place < m_nodes.size(); ++place) {
        if (IsHole(place)) continue;
        m_nodes[to++] = m_nodes[place];
        if (place < m_sorted) sorted = to;
    }
    m_nodes.resize(to);
    std::fill(m_holes.begin(), m_holes.end(), 0);
    m_numHoles = 0;
    m_sorted = sorted;
    return first;
}

std::vector<InternNode*> InternOrder::SortedTail(Compare compare) const {
    std::vector<InternNode*> tail;
    tail.reserve(m_nodes.size() - m_sorted);
    for (std::size_t place = m_sorted; place < m_nodes.size(); ++place)
        if (!IsHole(place)) tail.push_back(m_nodes[place]);
    // Stable: it stays within its range also when entries with extreme overprint words, whose difference
    // wraps, make the order run in a circle.
    std::stable_sort(tail.begin(), tail.end(),
                     [compare](const InternNode* a, const InternNode* b) { return compare(*a, *b) < 0; });
    return tail;
}

void InternOrder::Sort(Compare compare) {
    if (IsSorted()) return;
    const std::vector<InternNode*> tail = SortedTail(compare);
    const std::size_t closed = CloseHolesUnnumbered();
    const std::size_t merged = MergeUnnumbered(tail, compare);
    Renumber(std::min(closed, merged));
}

/// The first place whose entry has moved. Requires that there are no holes.
std::size_t InternOrder::MergeUnnumbered(const std::vector<InternNode*>& tail, Compare compare) noexcept {
    InternNode** const begin = m_nodes.data();
    InternNode** read = begin + m_sorted;
    InternNode** write = begin + m_nodes.size();
    for (auto node = tail.rbegin(); node != tail.rend(); ++node) {
        InternNode** const after = UpperBoundFromEnd(begin, read, **node, compare);
        write = std::move_backward(after, read, write);
        read = after;
        *--write = *node;
    }
    m_sorted = m_nodes.size();
    return static_cast<std::size_t>(write - begin);
}

void InternOrder::Renumber(std::size_t from) noexcept {
    for (std::size_t place = from; place < m_nodes.size(); ++place)
        m_nodes[place]->m_place = static_cast<std::uint32_t>(place);
}

void InternOrder::Clear() noexcept {
    *this = InternOrder();
}

}  // namespace VyrFOM
