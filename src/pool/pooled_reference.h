#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "fom/fill_list.h"
#include "fom/outline_list.h"
#include "fom/pooled_reference.h"

// How a reference changes what it refers to, for the sources of the handles. An entry that others hold too
// stays as it is: the reference registers a changed copy and gives its own one back. An entry that nobody
// else holds is changed where it is.

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
bool PooledReference<Entry, List>::SelectAndRegister(std::unique_ptr<Entry> entry,
                                                     AbstractFileStream* stream) {
    const std::shared_ptr<List> pool = FindPool();
    if (!pool) return false;
    if (IsHeldBy(pool)) {
        m_entry = pool->ReplaceInstance(m_entry, entry.get(), stream);
        entry.release();
        return true;
    }
    const Entry* pooled = pool->AddOrGetDuplicate(entry.get(), stream);
    entry.release();
    Clear();
    Hold(pooled, pool);
    return true;
}

template <class Entry, class List>
template <class Record>
bool PooledReference<Entry, List>::RegisterCopyOf(const Record& record) {
    const std::shared_ptr<List> pool = FindPool();
    if (!pool) return false;
    if (IsHeldBy(pool)) {
        m_entry = pool->ReplaceByCopy(m_entry, record);
        return true;
    }
    const Entry* pooled = pool->AddOrGetCopy(record);
    Clear();
    Hold(pooled, pool);
    return true;
}

template <class Entry, class List>
void PooledReference<Entry, List>::Adopt(Entry* entry) {
    const std::shared_ptr<List> holder = List::GetHolder(entry);
    if (!holder) {
        SelectAndRegister(std::unique_ptr<Entry>(entry));
    } else if (holder == FindPool()) {
        AddHolder(entry);
        Clear();
        Hold(entry, holder);
    } else {
        SelectAndRegister(CopyWhole(*entry));
    }
}

template <class Entry, class List>
void PooledReference<Entry, List>::Share(const PooledReference& other) {
    if (this == &other) return;
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
    Forget();
    m_entry = entry;
    if (!entry) return;
    if (const std::shared_ptr<List> holder = List::GetHolder(entry)) Hold(entry, holder);
}

// An entry that nobody else holds moves whole; what others hold too stays where it is.
template <class Entry, class List>
std::shared_ptr<List> PooledReference<Entry, List>::MoveTo(std::shared_ptr<List> pool) {
    std::shared_ptr<List> told = m_told.lock();
    const std::shared_ptr<List> target = pool ? pool : ActiveList(static_cast<const List*>(nullptr));
    if (!target) return told;
    const std::shared_ptr<List> holder = m_pooled ? m_holder.lock() : nullptr;
    const bool isThere = holder == target && m_entry->GetReference() == 1;
    if (!isThere) {
        const bool mayMove = holder && holder != target;
        const Entry* pooled = mayMove ? target->AdoptInstance(*holder, m_entry) : nullptr;
        if (pooled) {
            Forget();
        } else {
            std::unique_ptr<Entry> copy = MakePrivateCopy();
            pooled = target->AddOrGetDuplicate(copy.get(), nullptr);
            copy.release();
            Clear();
        }
        Hold(pooled, target);
    }
    m_told = pool;
    return told;
}

template <class Entry, class List>
Entry* PooledReference<Entry, List>::Extract() {
    std::unique_ptr<Entry> entry;
    if (const std::shared_ptr<List> holder = m_pooled ? m_holder.lock() : nullptr) {
        entry.reset(holder->ExtractInstanceForEditing(m_entry));
        // The pool refuses changes: the reference is kept, and the caller gets a copy.
        const bool isRefused = !entry && List::GetHolder(m_entry) == holder;
        if (!isRefused) Forget();
    }
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
    if (IsHeldBy(pool)) {
        const auto call = [](Entry& entry, void* context) {
            (*static_cast<std::remove_reference_t<Change>*>(context))(entry);
        };
        const Entry* edited =
            pool->EditInstance(m_entry, call, const_cast<void*>(static_cast<const void*>(&change)));
        if (edited) {
            m_entry = edited;
            return true;
        }
    }
    std::unique_ptr<Entry> copy = MakePrivateCopy();
    std::forward<Change>(change)(*copy);
    return SelectAndRegister(std::move(copy));
}

template <class Entry, class List>
bool PooledReference<Entry, List>::IsHeldBy(const std::shared_ptr<List>& pool) const noexcept {
    return m_pooled && !m_holder.owner_before(pool) && !pool.owner_before(m_holder);
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
}

template <class Entry, class List>
void PooledReference<Entry, List>::Clear() noexcept {
    if (m_pooled) {
        if (const std::shared_ptr<List> holder = m_holder.lock()) holder->RemoveInstance(m_entry);
    }
    Forget();
}

}  // namespace VyrFOM
