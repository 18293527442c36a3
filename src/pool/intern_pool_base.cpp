#include "pool/intern_pool_base.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <stdexcept>

namespace VyrFOM {

/// A visit that runs on this thread, in the list of all that do.
struct InternPoolBase::Visitor {
    explicit Visitor(const InternPoolBase& visited) noexcept : pool(visited), outer(t_innermost) {
        t_innermost = this;
        pool.m_visits.fetch_add(1, std::memory_order_relaxed);
    }
    ~Visitor() {
        pool.m_visits.fetch_sub(1, std::memory_order_relaxed);
        t_innermost = outer;
    }
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    const InternPoolBase& pool;
    const Visitor* const outer;
    static constinit thread_local const Visitor* t_innermost;
};

constinit thread_local const InternPoolBase::Visitor* InternPoolBase::Visitor::t_innermost = nullptr;

namespace {

constexpr std::size_t kKeptCapacity = 64;
constexpr std::uintptr_t kCacheLine = 64;

/// The node, and the line after it, which the deletion of the entry looks at.
void PrefetchEntry(const InternNode& node) noexcept {
    const auto first = reinterpret_cast<std::uintptr_t>(&node);
    __builtin_prefetch(reinterpret_cast<const void*>(first), 1);
    __builtin_prefetch(reinterpret_cast<const void*>(first + kCacheLine), 1);
}

}  // namespace

bool InternPoolBase::IsThisThreadVisiting() const noexcept {
    for (const Visitor* visitor = Visitor::t_innermost; visitor; visitor = visitor->outer)
        if (&visitor->pool == this) return true;
    return false;
}

void InternPoolBase::RefuseWhileVisited() const {
    if (!IsVisitedHere()) return;
    assert(false && "the pool must not change while it is enumerated");
    throw std::logic_error("the pool must not change while it is enumerated");
}

// Everything that can fail, before anything changes. Room that was promised stays free.
void InternPoolBase::Reserve(std::size_t more) {
    m_index.Reserve(more + m_promised);
    m_order.Reserve(more + m_promised);
}

void InternPoolBase::Promise() {
    RefuseWhileVisited();
    const WriteLock exclusive(m_lock);
    Reserve(1);
    ++m_promised;
}

void InternPoolBase::EndPromise() noexcept {
    const WriteLock exclusive(m_lock);
    --m_promised;
}

// Requires room.
void InternPoolBase::Link(InternNode& node, std::uint64_t hash, InternIndex::Gap gap) noexcept {
    node.m_hash = hash;
    m_index.Insert(hash, node, gap);
    m_order.Append(node);
    node.m_pool.store(this, std::memory_order_release);
    node.m_count.fetch_add(1, std::memory_order_relaxed);
    UpdateCount();
}

// What is left to do when an entry with one holder has gone from the index. Nobody races for the count: the
// one reference is the caller's.
void InternPoolBase::Detach(InternNode& node) noexcept {
    node.m_count.store(0, std::memory_order_relaxed);
    m_order.Remove(node);
    node.m_pool.store(nullptr, std::memory_order_relaxed);
    node.m_givenOut = true;
    UpdateCount();
    if (m_index.GetUsed() == 0) FreeUnusedMemory();
}

// An empty pool costs nothing; a small one keeps its memory, since an edit takes its only entry out and puts
// it back.
void InternPoolBase::FreeUnusedMemory() noexcept {
    if (m_index.GetCapacity() <= kKeptCapacity || m_promised != 0) return;
    m_index.Clear();
    m_order.Clear();
}

// From 1 to 0 under the exclusive lock only. Until the lock is there, others may find the entry and take it,
// hence the second look at the count: then it lives on, and the caller is no longer the last. With the lock,
// nobody is inside a lookup and nobody else holds the entry, so nobody can raise the count again: an entry
// with count 0 is never found, never freed while it is held, and never stands beside an equal newcomer.
//
// An entry that is not here does not come here either while the caller holds it, and what happens to it is no
// change of this pool: no lock, and no matter whether this thread is visiting.
InternPoolBase::Drop InternPoolBase::DropLast(InternNode& node) {
    if (PoolOf(node) != this) return DropApart(node);
    if (IsVisitedHere()) {
        assert(false && "the pool must not change while it is enumerated");
        return Drop::NotHere;
    }
    m_index.Prefetch(node.m_hash);
    const WriteLock exclusive(m_lock);
    return DropLastLocked(node);
}

// In a pool of another lock, others may find it at any time.
InternPoolBase::Drop InternPoolBase::DropApart(InternNode& node) noexcept {
    std::int32_t last = 1;
    const bool wasLast = node.m_count.compare_exchange_strong(last, 0, std::memory_order_acq_rel);
    return wasLast ? Drop::NotHere : Drop::StillHeld;
}

InternPoolBase::Drop InternPoolBase::DropLastLocked(InternNode& node) noexcept {
    if (node.m_pool.load(std::memory_order_relaxed) != this) return DropApart(node);
    if (CountOf(node) != 1) return Drop::StillHeld;
    m_index.Erase(node.m_hash, node);
    Detach(node);
    return Drop::Removed;
}

void InternPoolBase::Prefetch(const InternNode& node) const noexcept {
    if (node.m_pool.load(std::memory_order_relaxed) == this) m_index.Prefetch(node.m_hash);
}

// Every entry of a large pool and its slots are somewhere out of the caches: their loads are started some
// entries ahead, the entry first and then what it leads to, so that they overlap.
void InternPoolBase::DropBatch(std::span<InternNode* const> nodes, Drop* drops) {
    if (IsVisitedHere()) {  // only references that are not the last can go
        for (std::size_t i = 0; i < nodes.size(); ++i)
            drops[i] = DropReference(*nodes[i]);
        return;
    }
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < std::min(2 * kAhead, nodes.size()); ++i)
        PrefetchEntry(*nodes[i]);
    const WriteLock exclusive(m_lock);
    for (std::size_t i = 0; i < std::min(kAhead, nodes.size()); ++i)
        Prefetch(*nodes[i]);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i + 2 * kAhead < nodes.size()) PrefetchEntry(*nodes[i + 2 * kAhead]);
        if (i + kAhead < nodes.size()) Prefetch(*nodes[i + kAhead]);
        do {
            std::int32_t count = CountOf(*nodes[i]);
            drops[i] = Drop::StillHeld;
            while (count != 1 && !TryDrop(*nodes[i], count)) {
            }
            if (count != 1) break;
            drops[i] = DropLastLocked(*nodes[i]);
        } while (drops[i] == Drop::StillHeld);
    }
}

void InternPoolBase::SortTail() const {
    {
        const ReadLock shared(m_lock);
        if (m_order.IsSorted()) return;
    }
    const WriteLock exclusive(m_lock);
    m_order.Sort(m_compare);
}

// Sorting needs the exclusive lock and visiting the shared one, and there is no way from the one to the other
// without a gap, in which other threads may put entries in, change some and take some out. They are few: the
// visit then sorts a private list of that new tail and merges as it goes, instead of trying for the lock
// again and again. What was taken out is a hole by the time the shared lock is there, and a hole's place,
// which may lead to an entry that is gone, is never followed.
void InternPoolBase::Visit(VisitNode visit, void* context) const {
    if (IsVisitedHere()) {
        Walk(visit, context);  // a visit inside a visit: the shared lock is held, and is not recursive
        return;
    }
    SortTail();
    const ReadLock shared(m_lock);
    const Visitor visitor(*this);
    Walk(visit, context);
}

void InternPoolBase::Walk(VisitNode visit, void* context) const {
    const std::vector<InternNode*> tail = m_order.SortedTail(m_compare);
    auto late = tail.begin();
    for (std::size_t place = 0; place < m_order.GetSortedSize(); ++place) {
        const InternNode* node = m_order.At(place);
        if (!node) continue;
        for (; late != tail.end() && m_compare(**late, *node) < 0; ++late)
            if (!visit(context, **late)) return;
        if (!visit(context, *node)) return;
    }
    for (; late != tail.end(); ++late)
        if (!visit(context, **late)) return;
}

}  // namespace VyrFOM
