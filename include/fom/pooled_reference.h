#pragma once

#include <memory>
#include <utility>

class AbstractFileStream;

namespace VyrFOM {

/// What a handle of fills or outlines is made of: a counted reference to one entry of a pool, and the pool
/// that new entries go to. WFillHandle and WOutlineHandle say how it behaves.
///
/// The entry dies with the pool that holds it, and is gone for the reference from then on. Entries are given
/// back to the pool that really holds them. What throws bad_alloc leaves the reference as it was.
template <class Entry, class List>
class PooledReference {
public:
    /// Unset: the active pool, whichever that is.
    explicit PooledReference(std::weak_ptr<List> told = {}) noexcept : m_told(std::move(told)) {}
    PooledReference(const PooledReference&) = delete;
    PooledReference& operator=(const PooledReference&) = delete;
    ~PooledReference() { Clear(); }

    /// Null when there is none or its pool is gone.
    const Entry* Get() const noexcept { return m_pooled && m_holder.expired() ? nullptr : m_entry; }
    /// The pool that was told, while it lives.
    std::shared_ptr<List> GetTold() const noexcept { return m_told.lock(); }
    /// The pool that new entries go to; null when there is no active one either.
    std::shared_ptr<List> FindPool() const;

    /// Registers the entry and refers to what the pool answers. False, nothing changed, without a pool.
    bool SelectAndRegister(std::unique_ptr<Entry> entry, AbstractFileStream* stream = nullptr);
    /// The same for a record.
    template <class Record>
    bool RegisterCopyOf(const Record& record);
    /// Takes the entry over, also when it throws; one that is pooled already stays its pool's and is shared,
    /// or copied when its pool is not FindPool().
    void Adopt(Entry* entry);
    /// Shares the other's entry and pool.
    void Share(const PooledReference& other);
    /// Replaces the pointer, without touching counts or pools.
    void Set(Entry* entry) noexcept;
    /// Hands the entry over to `pool`, or the active one for null; the pool that was told before.
    std::shared_ptr<List> MoveTo(std::shared_ptr<List> pool);
    /// A private entry that the caller owns; an empty one without an entry. Nothing is left.
    Entry* Extract();
    /// A copy as an edit starts from, with what copying an entry leaves out unless the entry has other
    /// holders.
    std::unique_ptr<Entry> MakePrivateCopy() const;
    /// Changes the entry where it is when nobody else holds it, otherwise a copy of it, and registers it.
    /// `change` may throw as long as it leaves the entry as it was, and does not use the pool.
    template <class Change>
    bool Edit(Change&& change);

private:
    bool IsHeldBy(const std::shared_ptr<List>& pool) const noexcept;
    void Hold(const Entry* entry, const std::shared_ptr<List>& pool) noexcept;
    void Forget() noexcept;
    void Clear() noexcept;

    const Entry* m_entry = nullptr;
    std::weak_ptr<List> m_told;
    std::weak_ptr<List> m_holder;  // the pool that holds m_entry
    bool m_pooled = false;         // m_entry lives in m_holder, and dies with it
};

}  // namespace VyrFOM
