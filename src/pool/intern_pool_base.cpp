#include "pool/intern_pool_base.h"

#include <cassert>
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

// Everything that can fail comes first: with the room made, nothing after it does.
void InternPoolBase::Link(InternNode& node, std::uint64_t hash) {
    m_index.ReserveOne();
    m_order.ReserveOne();

    node.m_hash = hash;
    m_index.Insert(hash, node);
    m_order.Append(node);
    node.m_pool.store(this, std::memory_order_release);
    node.m_count.fetch_add(1, std::memory_order_relaxed);
    m_count.store(m_index.GetUsed(), std::memory_order_relaxed);
}

void InternPoolBase::Unlink(InternNode& node) noexcept {
    m_index.Erase(node.m_hash, node);
    m_order.Remove(node);
    node.m_pool.store(nullptr, std::memory_order_relaxed);
    node.m_givenOut = true;
    m_count.store(m_index.GetUsed(), std::memory_order_relaxed);
    if (m_index.GetUsed() == 0) FreeUnusedMemory();
}

// An empty pool costs nothing; a small one keeps its memory, since an edit takes its only entry out and puts
// it back.
void InternPoolBase::FreeUnusedMemory() noexcept {
    if (m_index.GetCapacity() <= kKeptCapacity) return;
    m_index.Clear();
    m_order.Clear();
}

// From 1 to 0 under the exclusive lock only. Until the lock is there, others may find the entry and take it,
// hence the second look at the count: then it lives on, and the caller is no longer the last. With the lock,
// nobody is inside a lookup and nobody else holds the entry, so nobody can raise the count again: an entry
// with count 0 is never found, never freed while it is held, and never stands beside an equal newcomer.
InternPoolBase::Drop InternPoolBase::DropLast(InternNode& node) {
    if (IsVisitedHere()) {
        assert(false && "the pool must not change while it is enumerated");
        return Drop::NotHere;
    }
    const WriteLock exclusive(m_lock);
    return DropLastLocked(node);
}

InternPoolBase::Drop InternPoolBase::DropLastLocked(InternNode& node) noexcept {
    if (node.m_pool.load(std::memory_order_relaxed) != this) {
        // This lock keeps nobody from finding it in a pool of another lock.
        std::int32_t last = 1;
        const bool wasLast = node.m_count.compare_exchange_strong(last, 0, std::memory_order_acq_rel);
        return wasLast ? Drop::NotHere : Drop::StillHeld;
    }
    if (CountOf(node) != 1) return Drop::StillHeld;
    node.m_count.store(0, std::memory_order_relaxed);  // the one reference is the caller's: nobody races
    Unlink(node);
    return Drop::Removed;
}

void InternPoolBase::Prefetch(const InternNode& node) const noexcept {
    if (node.m_pool.load(std::memory_order_relaxed) != this) return;
    m_index.Prefetch(node.m_hash);
    m_order.Prefetch(node);
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
        __builtin_prefetch(nodes[i], 1);
    const WriteLock exclusive(m_lock);
    for (std::size_t i = 0; i < std::min(kAhead, nodes.size()); ++i)
        Prefetch(*nodes[i]);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (i + 2 * kAhead < nodes.size()) __builtin_prefetch(nodes[i + 2 * kAhead], 1);
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
// without a gap, in which other threads may put entries in. They are few: the visit then sorts a private list
// of that new tail and merges as it goes, instead of trying for the lock again and again.
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
    for (auto at = m_order.SortedBegin(); at != m_order.SortedEnd(); ++at) {
        if (!*at) continue;
        for (; late != tail.end() && m_compare(**late, **at) < 0; ++late)
            if (!visit(context, **late)) return;
        if (!visit(context, **at)) return;
    }
    for (; late != tail.end(); ++late)
        if (!visit(context, **late)) return;
}

}  // namespace VyrFOM
