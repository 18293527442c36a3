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
///  * Exclusive lock: putting an entry in, taking one out, changing one, sorting.
///  * No lock: raising or lowering the count of an entry that the caller holds, as long as it stays above 0.
/// The content of a pooled entry changes only under the exclusive lock and at the hand of its only holder
/// (see Rekey), so that it is read under the shared lock or by a holder alike.
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
        m_index.Prefetch(hash);
        const SharedSection shared(*this);
        InternNode* const found = FindAndHoldLocked(hash, isEqual);
        NoteLook(found != nullptr);
        return found;
    }
    /// Whether InsertOrHold without a look under the shared lock is the better way: after a look that found
    /// nothing the next one rarely does (a document is being loaded), and what was taken out to be edited has
    /// rarely become equal to another entry. A wrong guess costs nothing but the exclusive lock.
    bool ExpectsMiss(const InternNode& node) const noexcept {
        return (node.m_givenOut || m_hasMissed.load(std::memory_order_relaxed)) && !IsVisitedHere();
    }
    /// Puts `node` in with one more reference, unless there is an equal entry by now; then that one is held.
    /// Throws bad_alloc, length_error or, when this thread is visiting the pool, logic_error, with nothing
    /// changed. `unpark` is called, under the lock, when a parked entry becomes a pooled one.
    template <class IsEqual, class Unpark>
    InternNode* InsertOrHold(InternNode& node, std::uint64_t hash, IsEqual&& isEqual, Unpark&& unpark) {
        RefuseWhileVisited();
        m_index.Prefetch(hash);
        const WriteLock exclusive(m_lock);
        Reserve(1);
        InternIndex::Gap gap;
        // Between the caller's look under the shared lock and this one, another thread may have put an equal
        // entry in.
        InternNode* const found = FindAndHoldLocked(hash, isEqual, gap);
        NoteLook(found != nullptr);
        if (found) return found;
        Link(node, hash, gap);
        if (node.m_parked) unpark();
        return &node;
    }

    /// Lets `change`, which returns the new hash, change an entry that is here and that the caller alone
    /// holds. Null, nothing changed, when others hold it. Otherwise the entry; or an equal one, held for the
    /// caller, with the changed one out of the pool and the caller's. What `change` throws passes, with
    /// everything as it was if it has left the content as it was; so do Reserve's exceptions and logic_error
    /// when this thread is visiting the pool.
    //
    // The change happens in the entry itself and under the exclusive lock. Nobody sees a half of it: who
    // looks the entry up or visits it has the shared lock, and with a count of 1, read under this lock, there
    // is no holder but the caller who could read it without one. Before the change the entry leaves the
    // index, which finds it by its old hash; in the order it keeps its place if that is in the unsorted tail.
    // Putting it back into the index needs no memory, since its own slot has just become free.
    template <class Change, class IsEqual>
    InternNode* Rekey(InternNode& node, Change&& change, IsEqual&& isEqual) {
        RefuseWhileVisited();
        m_index.Prefetch(node.m_hash);
        const WriteLock exclusive(m_lock);
        if (!IsLastHere(node)) return nullptr;
        const bool moves = m_order.IsInSortedPart(node);
        if (moves) m_order.Reserve(1 + m_promised);
        m_index.Erase(node.m_hash, node);
        std::uint64_t hash = 0;
        try {
            hash = change();
        } catch (...) {
            m_index.Insert(node.m_hash, node);
            throw;
        }
        InternIndex::Gap gap;
        if (InternNode* found = FindAndHoldLocked(hash, isEqual, gap)) {
            Detach(node);
            return found;
        }
        node.m_hash = hash;
        m_index.Insert(hash, node, gap);
        if (moves) {
            m_order.Remove(node);
            m_order.Append(node);
        }
        return &node;
    }

    /// InsertOrHold of `node`, with the caller's reference on `old` given up in the same step: an `old` that
    /// the caller alone holds leaves the pool first, so that it is not found as the equal one, and `isOut`
    /// says that it is the caller's. Otherwise the reference is still to be given up. `settle(pooled)` is
    /// called before anything changes for others; when it throws, nothing has changed.
    //
    // Under one lock, for the same reasons as Rekey.
    template <class IsEqual, class Settle>
    InternNode* Exchange(InternNode& old, InternNode& node, std::uint64_t hash, IsEqual&& isEqual,
                         Settle&& settle, bool& isOut) {
        RefuseWhileVisited();
        const WriteLock exclusive(m_lock);
        isOut = IsLastHere(old);
        Reserve(1);
        if (isOut) m_index.Erase(old.m_hash, old);
        InternIndex::Gap gap;
        InternNode* const found = m_index.Find(hash, isEqual, gap);
        try {
            settle(found);
        } catch (...) {
            if (isOut) m_index.Insert(old.m_hash, old);
            throw;
        }
        if (found)
            found->m_count.fetch_add(1, std::memory_order_relaxed);
        else
            Link(node, hash, gap);
        if (isOut) Detach(old);
        return found ? found : &node;
    }

    /// Keeps room for one entry that InsertPromised will put in, or EndPromise will not. Throws as
    /// InsertOrHold.
    void Promise();
    void EndPromise() noexcept;
    /// InsertOrHold after Promise, which it ends. Does not fail.
    template <class IsEqual>
    InternNode* InsertPromised(InternNode& node, std::uint64_t hash, IsEqual&& isEqual) noexcept {
        const WriteLock exclusive(m_lock);
        --m_promised;
        InternIndex::Gap gap;
        if (InternNode* found = FindAndHoldLocked(hash, isEqual, gap)) return found;
        Link(node, hash, gap);
        return &node;
    }
    static std::uint64_t HashOf(const InternNode& node) noexcept { return node.m_hash; }

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
    /// While this thread visits the pool: NotHere with nothing changed, asserted, for an entry that is here.
    Drop DropLast(InternNode& node);

    /// Most entries that DropBatch takes at once.
    static constexpr std::size_t kBatch = 64;
    /// Gives up one reference on each entry under one lock. What DropReference would have answered for
    /// `nodes[i]` stands in `drops[i]`.
    void DropBatch(std::span<InternNode* const> nodes, Drop* drops);

    /// Calls `visit` with every entry in order until it returns false. It may look up, but not change the
    /// pool.
    void Visit(VisitNode visit, void* context) const;
    /// Every entry, in any order; for the destructor.
    template <class Take>
    void ForEach(Take&& take) noexcept {
        for (std::size_t place = 0; place < m_order.GetSize(); ++place)
            if (InternNode* node = m_order.At(place)) take(*node);
    }

private:
    struct Visitor;

    /// `gap`: what InternIndex::Find takes, with what it requires, or nothing.
    template <class IsEqual, class... Gap>
    InternNode* FindAndHoldLocked(std::uint64_t hash, IsEqual&& isEqual, Gap&... gap) const {
        InternNode* node = m_index.Find(hash, isEqual, gap...);
        if (!node) return nullptr;
        node->m_count.fetch_add(1, std::memory_order_relaxed);
        return node;
    }
    /// Written when it changes only: threads that hit share the line without disturbing one another.
    void NoteLook(bool found) const noexcept {
        if (m_hasMissed.load(std::memory_order_relaxed) == found)
            m_hasMissed.store(!found, std::memory_order_relaxed);
    }
    static Drop DropApart(InternNode& node) noexcept;
    Drop DropLastLocked(InternNode& node) noexcept;
    /// Under the exclusive lock: whether the entry is here and the caller its only holder.
    bool IsLastHere(const InternNode& node) const noexcept {
        return node.m_pool.load(std::memory_order_relaxed) == this && CountOf(node) == 1;
    }
    void Prefetch(const InternNode& node) const noexcept;
    void Reserve(std::size_t more);
    void Link(InternNode& node, std::uint64_t hash, InternIndex::Gap gap) noexcept;
    void Detach(InternNode& node) noexcept;
    void UpdateCount() noexcept { m_count.store(m_index.GetUsed(), std::memory_order_relaxed); }
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
    std::size_t m_promised = 0;   // entries that are still to come, with room kept for each
    std::atomic<std::size_t> m_count{0};
    mutable std::atomic<bool> m_hasMissed{false};    // the last look of any thread; see ExpectsMiss
    mutable std::atomic<std::uint32_t> m_visits{0};  // visits that run now, on any thread
};

}  // namespace VyrFOM
