#pragma once

#include <memory>
#include <new>
#include <utility>

#include "fom/fill_list.h"
#include "fom/outline_list.h"
#include "fom/pooled_reference.h"

// How a reference changes what it refers to, for the sources of the handles.
//
// An entry that others hold too stays where it is: the new one is registered first and the old reference
// given back afterwards, so a failure in between changes nothing. An entry that this reference alone holds
// leaves the pool before the new one comes, because the two may be equal in the pool's order and still differ
// in fields that the order does not read (a GUID, an overprint word under an ink); the pool would answer with
// the old one. On failure it goes back into the place that it has just left.

namespace VyrFOM {

inline std::shared_ptr<WRCFillList> ActiveList(const WRCFillList*) {
    return GetActiveFillList();
}

inline std::shared_ptr<WRCOutlineList> ActiveList(const WRCOutlineList*) {
    return GetActiveOutlineList()->GetUnowned();
}

/// What copying an entry leaves out as well.
inline std::unique_ptr<WRefCountFill> CopyWhole(const WRefCountFill& entry) {
    auto copy = std::make_unique<WRefCountFill>(entry);
    copy->SetUserData(entry.GetUserData());
    return copy;
}

inline std::unique_ptr<WRefCountOutline> CopyWhole(const WRefCountOutline& entry) {
    auto copy = std::make_unique<WRefCountOutline>(entry);
    copy->SetColorName(entry.GetColorName());
    return copy;
}

/// Pooled entries count their holders though they are constant in everything else.
template <class Entry>
void AddHolder(const Entry* entry) noexcept {
    const_cast<Entry*>(entry)->AddReference(1);
}

template <class Entry, class List>
std::shared_ptr<List> PooledReference<Entry, List>::FindPool() const {
    std::shared_ptr<List> pool = m_told.lock();
    return pool ? pool : ActiveList(static_cast<const List*>(nullptr));
}

template <class Entry, class List>
bool PooledReference<Entry, List>::Register(std::unique_ptr<Entry> entry, AbstractFileStream* stream) {
    const std::shared_ptr<List> pool = FindPool();
    if (!pool) return false;
    return Replace(pool, [&](List& list) {
        const Entry* pooled = list.AddOrGetDuplicate(entry.get(), stream);
        if (pooled) entry.release();
        return pooled;
    });
}

template <class Entry, class List>
template <class Record>
bool PooledReference<Entry, List>::RegisterCopyOf(const Record& record) {
    const std::shared_ptr<List> pool = FindPool();
    if (!pool) return false;
    return Replace(pool, [&](List& list) { return list.AddOrGetCopy(record); });
}

template <class Entry, class List>
void PooledReference<Entry, List>::Adopt(Entry* entry) {
    const std::shared_ptr<List> holder = List::GetHolder(entry);
    if (!holder) {
        Register(std::unique_ptr<Entry>(entry));
    } else if (holder == FindPool()) {
        AddHolder(entry);
        Clear();
        Hold(entry, holder);
    } else {
        Register(CopyWhole(*entry));
    }
}

template <class Entry, class List>
void PooledReference<Entry, List>::Share(const PooledReference& other) {
    if (this == &other) return;
    if (other.m_own) {
        std::unique_ptr<Entry> copy = CopyWhole(*other.m_own);
        m_told = other.m_told;
        Register(std::move(copy));
        return;
    }
    // Locked while the count is raised, so that the entry cannot die in between.
    const std::shared_ptr<List> holder = other.m_pooled ? other.m_holder.lock() : nullptr;
    const bool isGone = other.m_pooled && !holder;
    const Entry* entry = isGone ? nullptr : other.m_entry;
    if (holder) AddHolder(entry);
    Clear();
    m_entry = entry;
    m_pooled = holder != nullptr;
    m_holder = holder;
    m_told = other.m_told;
}

template <class Entry, class List>
void PooledReference<Entry, List>::Set(Entry* entry) noexcept {
    if (entry && entry == m_own.get()) return;
    Forget();
    m_entry = entry;
    if (!entry) return;
    if (const std::shared_ptr<List> holder = List::GetHolder(entry)) Hold(entry, holder);
}

template <class Entry, class List>
std::shared_ptr<List> PooledReference<Entry, List>::MoveTo(std::shared_ptr<List> pool) {
    std::shared_ptr<List> told = m_told.lock();
    const std::shared_ptr<List> target = pool ? pool : ActiveList(static_cast<const List*>(nullptr));
    if (!target) return told;
    const std::shared_ptr<List> holder = m_pooled ? m_holder.lock() : nullptr;
    std::unique_ptr<Entry> own = holder && IsOnlyHolderIn(holder) ? TakeOut(*holder) : nullptr;
    std::unique_ptr<Entry> entry = own ? std::move(own) : MakePrivateCopy();
    const Entry* pooled = nullptr;
    try {
        pooled = target->AddOrGetDuplicate(entry.get(), nullptr);
    } catch (...) {
        if (!m_entry && holder) PutBack(holder, std::move(entry));
        throw;
    }
    entry.release();
    Clear();
    Hold(pooled, target);
    m_told = pool;
    return told;
}

template <class Entry, class List>
Entry* PooledReference<Entry, List>::Extract() {
    std::unique_ptr<Entry> entry = std::move(m_own);
    const std::shared_ptr<List> holder = m_pooled ? m_holder.lock() : nullptr;
    if (holder) entry = TakeOut(*holder);
    if (!entry) entry = MakePrivateCopy();
    Clear();
    return entry.release();
}

template <class Entry, class List>
std::unique_ptr<Entry> PooledReference<Entry, List>::MakePrivateCopy() const {
    const Entry* entry = Get();
    if (!entry) return std::make_unique<Entry>(false);
    const bool isShared = m_pooled && entry->GetReference() > 1;
    return isShared ? std::make_unique<Entry>(*entry) : CopyWhole(*entry);
}

template <class Entry, class List>
template <class Change>
bool PooledReference<Entry, List>::Edit(Change&& change) {
    const std::shared_ptr<List> pool = FindPool();
    if (!pool) return false;
    std::unique_ptr<Entry> own = IsOnlyHolderIn(pool) ? TakeOut(*pool) : nullptr;
    if (!own) {
        std::unique_ptr<Entry> copy = MakePrivateCopy();
        std::forward<Change>(change)(*copy);
        return Register(std::move(copy));
    }
    try {
        std::forward<Change>(change)(*own);
    } catch (...) {
        PutBack(pool, std::move(own));
        throw;
    }
    PutBack(pool, std::move(own));
    return true;
}

template <class Entry, class List>
bool PooledReference<Entry, List>::IsOnlyHolderIn(const std::shared_ptr<List>& pool) const noexcept {
    const bool isThere = m_pooled && !m_holder.owner_before(pool) && !pool.owner_before(m_holder);
    return isThere && m_entry->GetReference() == 1;
}

/// Requires that the entry lives in `pool`. Nothing is held then; null, and nothing has changed, while the
/// pool refuses changes.
template <class Entry, class List>
std::unique_ptr<Entry> PooledReference<Entry, List>::TakeOut(List& pool) {
    std::unique_ptr<Entry> entry(pool.ExtractInstanceForEditing(m_entry));
    if (!entry && List::GetHolder(m_entry).get() == &pool) return nullptr;
    Forget();
    return entry ? std::move(entry) : std::make_unique<Entry>(false);
}

/// Requires that nothing is held. When it throws, `entry` is the caller's as before.
template <class Entry, class List>
void PooledReference<Entry, List>::Put(const std::shared_ptr<List>& pool, std::unique_ptr<Entry>& entry) {
    const Entry* pooled = pool->AddOrGetDuplicate(entry.get(), nullptr);
    if (!pooled) throw std::bad_alloc();
    entry.release();
    Hold(pooled, pool);
}

/// An entry that went out a moment ago goes back; where even that needs memory, the reference keeps it.
template <class Entry, class List>
void PooledReference<Entry, List>::PutBack(const std::shared_ptr<List>& pool,
                                           std::unique_ptr<Entry> entry) noexcept {
    if (!entry) return;
    try {
        Put(pool, entry);
    } catch (...) {
        m_own = std::move(entry);
        m_entry = m_own.get();
    }
}

/// Lets `add` register an entry in `pool` and holds the result instead of the current one. False, nothing
/// changed, when `add` yields none.
template <class Entry, class List>
template <class Add>
bool PooledReference<Entry, List>::Replace(const std::shared_ptr<List>& pool, Add&& add) {
    std::unique_ptr<Entry> old;
    if (IsOnlyHolderIn(pool)) old = TakeOut(*pool);
    const Entry* fresh = nullptr;
    try {
        fresh = std::forward<Add>(add)(*pool);
    } catch (...) {
        PutBack(pool, std::move(old));
        throw;
    }
    if (!fresh) {
        PutBack(pool, std::move(old));
        return false;
    }
    Clear();
    Hold(fresh, pool);
    return true;
}

template <class Entry, class List>
void PooledReference<Entry, List>::Hold(const Entry* entry, const std::shared_ptr<List>& pool) noexcept {
    m_entry = entry;
    if (m_holder.owner_before(pool) || pool.owner_before(m_holder)) m_holder = pool;
    m_pooled = true;
}

/// m_holder stays, since most often the next entry comes from the same pool; without m_pooled it says
/// nothing.
template <class Entry, class List>
void PooledReference<Entry, List>::Forget() noexcept {
    m_entry = nullptr;
    m_pooled = false;
    m_own.reset();
}

template <class Entry, class List>
void PooledReference<Entry, List>::Clear() noexcept {
    if (m_pooled) {
        if (const std::shared_ptr<List> holder = m_holder.lock()) holder->RemoveInstance(m_entry);
    }
    Forget();
}

}  // namespace VyrFOM
