#include "pool/intern_order.h"

#include <algorithm>
#include <cassert>

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

void InternOrder::ReserveOne() {
    if (m_nodes.size() == m_nodes.capacity()) m_nodes.reserve(std::max(kFirstCapacity, 2 * m_nodes.size()));
}

void InternOrder::Append(InternNode& node) noexcept {
    assert(m_nodes.size() < m_nodes.capacity());
    node.m_place = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.push_back(&node);
}

void InternOrder::Remove(const InternNode& node) noexcept {
    if (node.m_place >= m_sorted) {
        InternNode* last = m_nodes.back();
        m_nodes[node.m_place] = last;
        last->m_place = node.m_place;
        m_nodes.pop_back();
        return;
    }
    m_nodes[node.m_place] = nullptr;
    ++m_holes;
    if (m_holes > kToleratedHoles && m_holes > m_nodes.size() / 2) CloseHoles();
}

void InternOrder::CloseHoles() noexcept {
    if (m_holes == 0) return;
    const auto firstHole = std::find(m_nodes.begin(), m_nodes.end(), nullptr);
    const auto from = static_cast<std::size_t>(firstHole - m_nodes.begin());
    m_nodes.erase(std::remove(firstHole, m_nodes.end(), nullptr), m_nodes.end());
    m_sorted -= m_holes;
    m_holes = 0;
    Renumber(from);
}

std::vector<InternNode*> InternOrder::SortedTail(Compare compare) const {
    std::vector<InternNode*> tail(m_nodes.begin() + static_cast<std::ptrdiff_t>(m_sorted), m_nodes.end());
    // Stable: it stays within its range also when entries with extreme overprint words, whose difference
    // wraps, make the order run in a circle.
    std::stable_sort(tail.begin(), tail.end(),
                     [compare](const InternNode* a, const InternNode* b) { return compare(*a, *b) < 0; });
    return tail;
}

void InternOrder::Sort(Compare compare) {
    if (IsSorted()) return;
    const std::vector<InternNode*> tail = SortedTail(compare);
    CloseHoles();
    Merge(tail, compare);
}

void InternOrder::Merge(const std::vector<InternNode*>& tail, Compare compare) noexcept {
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
    Renumber(static_cast<std::size_t>(write - begin));
}

void InternOrder::Renumber(std::size_t from) noexcept {
    for (std::size_t place = from; place < m_nodes.size(); ++place)
        m_nodes[place]->m_place = static_cast<std::uint32_t>(place);
}

void InternOrder::Clear() noexcept {
    *this = InternOrder();
}

}  // namespace VyrFOM
