#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/base/thread_lock.h"

#include "fom/intern_node.h"

#include "pool/intern_index.h"
#include "pool/intern_order.h"

namespace VyrFOM {

/// The part of an intern pool that does not depend on the type of its entries: index, order, counts
/// of holders, and who may be where on which thread. docs/pool.md has the picture.
///
/// Threads. `m_lock` is the pool's own reader-writer lock.
///  * Shared lock: looking up, raising the count of what was found, walking the order.
///  * Exclusive lock: putting an entry in, taking one out, sorting.
///  * No lock: raising or lowering the count of an entry that the caller holds, as long as it stays above 0.
/// The content of a pooled entry does not change, so that it is read under the shared lock or by a holder
/// alike.
class InternPoolBase {
public:
    InternPoolBase(const ThreadLock& lock, InternOrder::Compare compare, void* owner) noexcept
        : m_lock(lock), m_compare(compare), m_owner(owner) {}
    InternPoolBase(const InternPoolBase&) = delete;
    InternPoolBase& operator=(const InternPoolBase&) = delete;

    std::size_t GetCount() const noexcept { return m_count.load(std::memory_order_relaxed); }
    /// What was given to the constructor.
    void* GetOwner() const noexcept { return m_owner; }
    /// The pool that holds the entry now, or null. The caller holds the entry.
    static InternPoolBase* PoolOf(const InternNode& node) noexcept {
        return node.m_pool.load(std::memory_order_acquire);
    }

protected:
    ~InternPoolBase() = default;

    enum class Drop {
        StillHeld,  // others hold the entry
        Removed,    // the last reference is gone and the entry is out of the pool: the caller's
        NotHere     // the last reference is gone and the entry was never in this pool
    };
    using VisitNode = bool (*)(void* context, const InternNode& node);

    /// Holds the shared lock, unless this thread holds it already because it is visiting this pool.
    class SharedSection {
    public:
        explicit SharedSection(const InternPoolBase& pool) noexcept
            : m_lock(pool.IsVisitedHere() ? nullptr : &pool.m_lock) {
            if (m_lock) m_lock->LockRead();
        }
        ~SharedSection() {
            if (m_lock) m_lock->UnlockRead();
        }
        SharedSection(const SharedSection&) = delete;
        SharedSection& operator=(const SharedSection&) = delete;

    private:
        const ThreadLock* m_lock;
    };

    static bool IsParked(const InternNode& node) noexcept { return node.m_parked; }
    static std::int32_t CountOf(const InternNode& node) noexcept {
        return node.m_count.load(std::memory_order_acquire);
    }

    /// The entry that `isEqual` accepts, with one more reference; null when there is none.
    template <class IsEqual>
    InternNode* FindAndHold(std::uint64_t hash, IsEqual&& isEqual) const {
        // A hit raises the count under the shared lock. The last reference is given up under the exclusive
        // lock only (see DropLast), so whatever is found here is held by someone, and stays alive until the
        // count is raised.
        const SharedSection shared(*this);
        return FindAndHoldLocked(hash, isEqual);
    }
    /// Puts `node` in with one more reference, unless there is an equal entry by now; then that one is held.
    /// Throws bad_alloc, length_error or, when this thread is visiting the pool, logic_error, with nothing
    /// changed. `unpark` is called, under the lock, when a parked entry becomes a pooled one.
    template <class IsEqual, class Unpark>
    InternNode* InsertOrHold(InternNode& node, std::uint64_t hash, IsEqual&& isEqual, Unpark&& unpark) {
        RefuseWhileVisited();
        const WriteLock exclusive(m_lock);
        // Between the caller's look under the shared lock and this one, another thread may have put an equal
        // entry in.
        if (InternNode* found = FindAndHoldLocked(hash, isEqual)) return found;
        Link(node, hash);
        if (node.m_parked) unpark();
        return &node;
    }
    /// Gives up one reference.
    //
    // While the count is above 1, someone else holds the entry, whoever that may be when the exchange
    // succeeds: nothing is left to do, and the entry is not touched again. A count below 1 is an entry that
    // was never handed out; it goes down all the same.
    Drop DropReference(InternNode& node) {
        for (std::int32_t count = CountOf(node);;) {
            if (count != 1) {
                if (TryDrop(node, count)) return Drop::StillHeld;
                continue;
            }
            const Drop drop = DropLast(node);
            if (drop != Drop::StillHeld) return drop;
            count = CountOf(node);
        }
    }
    /// From the count that was read to one below: false, with `count` read again, when it has changed
    /// meanwhile.
    static bool TryDrop(InternNode& node, std::int32_t& count) noexcept {
        const auto lower = static_cast<std::int32_t>(static_cast<std::uint32_t>(count) - 1);
        return node.m_count.compare_exchange_weak(count, lower, std::memory_order_acq_rel,
                                                  std::memory_order_acquire);
    }
    /// The end of a count of 1. StillHeld, with nothing changed, when someone has taken the entry meanwhile.
    /// While this thread visits the pool: NotHere with nothing changed, asserted.
    Drop DropLast(InternNode& node);

    /// Most entries that DropBatch takes at once.
    static constexpr std::size_t kBatch = 64;
    /// Gives up one reference on each entry under one lock. What DropReference would have answered for
    /// `nodes[i]` stands in `drops[i]`.
    void DropBatch(std::span<InternNode* const> nodes, Drop* drops);
    /// An entry that this pool has given out for editing: nothing equal is likely to be here.
    static bool WasGivenOut(const InternNode& node) noexcept { return node.m_givenOut; }

    /// Calls `visit` with every entry in order until it returns false. It may look up, but not change the
    /// pool.
    void Visit(VisitNode visit, void* context) const;
    /// Every entry, in any order; for the destructor.
    const std::vector<InternNode*>& Entries() const noexcept { return m_order.All(); }

private:
    struct Visitor;

    template <class IsEqual>
    InternNode* FindAndHoldLocked(std::uint64_t hash, IsEqual&& isEqual) const {
        InternNode* node = m_index.Find(hash, isEqual);
        if (!node) return nullptr;
        node->m_count.fetch_add(1, std::memory_order_relaxed);
        return node;
    }
    Drop DropLastLocked(InternNode& node) noexcept;
    void Prefetch(const InternNode& node) const noexcept;
    void Link(InternNode& node, std::uint64_t hash);
    void Unlink(InternNode& node) noexcept;
    void FreeUnusedMemory() noexcept;
    void SortTail() const;
    void Walk(VisitNode visit, void* context) const;
    void RefuseWhileVisited() const;
    bool IsVisitedHere() const noexcept {
        return m_visits.load(std::memory_order_relaxed) != 0 && IsThisThreadVisiting();
    }
    bool IsThisThreadVisiting() const noexcept;

    const ThreadLock& m_lock;
    const InternOrder::Compare m_compare;
    void* const m_owner;
    InternIndex m_index;
    mutable InternOrder m_order;  // sorted when it is read; see Visit
    std::atomic<std::size_t> m_count{0};
    mutable std::atomic<std::uint32_t> m_visits{0};  // visits that run now, on any thread
};

}  // namespace VyrFOM
