#include <new>
#include <utility>

#include "fill/fill_handle_edit.h"
#include "fill/fill_handle_entries.h"

std::shared_ptr<WRCFillList> WFillHandle::FindPool() const {
    std::shared_ptr<WRCFillList> pool = m_pool.lock();
    return pool ? pool : GetActiveFillList();
}

bool WFillHandle::IsOnlyHolderIn(const std::shared_ptr<WRCFillList>& pool) const noexcept {
    const bool isThere = m_pooled && !m_holder.owner_before(pool) && !pool.owner_before(m_holder);
    return isThere && m_entry->GetReference() == 1;
}

/// A copy as an edit starts from: of an entry with other holders without its user data.
std::unique_ptr<WRefCountFill> WFillHandle::MakePrivateCopy() const {
    const WRefCountFill* entry = Entry();
    if (!entry) return std::make_unique<WRefCountFill>(false);
    const bool isShared = m_pooled && entry->GetReference() > 1;
    return isShared ? std::make_unique<WRefCountFill>(*entry) : CopyWithUserData(*entry);
}

/// Requires that the entry lives in `pool`. The handle holds nothing then; null, and nothing has changed,
/// while the pool refuses changes.
std::unique_ptr<WRefCountFill> WFillHandle::TakeOut(WRCFillList& pool) {
    std::unique_ptr<WRefCountFill> entry(pool.ExtractInstanceForEditing(m_entry));
    if (!entry && WRCFillList::GetHolder(m_entry).get() == &pool) return nullptr;
    Forget();
    return entry ? std::move(entry) : std::make_unique<WRefCountFill>(false);
}

/// Requires a handle that holds nothing. When it throws, `entry` is the caller's as before.
void WFillHandle::Register(const std::shared_ptr<WRCFillList>& pool, std::unique_ptr<WRefCountFill>& entry) {
    const WRefCountFill* pooled = pool->AddOrGetDuplicate(entry.get(), nullptr);
    if (!pooled) throw std::bad_alloc();
    entry.release();
    Hold(pooled, pool);
}

/// An entry that went out a moment ago goes back; where even that needs memory, the handle keeps it itself.
void WFillHandle::PutBack(const std::shared_ptr<WRCFillList>& pool,
                          std::unique_ptr<WRefCountFill> entry) noexcept {
    if (!entry) return;
    try {
        Register(pool, entry);
    } catch (...) {
        m_own = std::move(entry);
        m_entry = m_own.get();
    }
}

void WFillHandle::Hold(const WRefCountFill* entry, const std::shared_ptr<WRCFillList>& pool) noexcept {
    m_entry = entry;
    if (m_holder.owner_before(pool) || pool.owner_before(m_holder)) m_holder = pool;
    m_pooled = true;
}

/// m_holder stays, since most often the next entry comes from the same pool; without m_pooled it says
/// nothing.
void WFillHandle::Forget() noexcept {
    m_entry = nullptr;
    m_pooled = false;
    m_own.reset();
}

void WFillHandle::Clear() noexcept {
    if (m_pooled) {
        if (const std::shared_ptr<WRCFillList> holder = m_holder.lock()) holder->RemoveInstance(m_entry);
    }
    Forget();
}

bool WFillHandle::SelectAndRegister(std::unique_ptr<WRefCountFill> entry, AbstractFileStream* stream) {
    const std::shared_ptr<WRCFillList> pool = FindPool();
    if (!pool) return false;
    return Replace(pool, [&](WRCFillList& list) {
        const WRefCountFill* pooled = list.AddOrGetDuplicate(entry.get(), stream);
        if (pooled) entry.release();
        return pooled;
    });
}

bool WFillHandle::RegisterCopyOf(const CGE_FILL& record) {
    const std::shared_ptr<WRCFillList> pool = FindPool();
    if (!pool) return false;
    return Replace(pool, [&](WRCFillList& list) { return list.AddOrGetCopy(record); });
}

void WFillHandle::Copy(const WFillHandle& other) {
    if (this == &other) return;
    if (other.m_own) {
        WFillHandle copy(CopyWithUserData(*other.m_own).release(), other.m_pool.lock());
        copy.m_tilingMatrix = other.m_tilingMatrix;
        return Copy(copy);
    }
    // Locked while the count is raised, so that the entry cannot die in between.
    const std::shared_ptr<WRCFillList> holder = other.m_pooled ? other.m_holder.lock() : nullptr;
    const bool isGone = other.m_pooled && !holder;
    const WRefCountFill* entry = isGone ? nullptr : other.m_entry;
    if (holder) AddHolder(entry);
    Clear();
    m_entry = entry;
    m_pooled = holder != nullptr;
    m_holder = holder;
    m_pool = other.m_pool;
    m_tilingMatrix = other.m_tilingMatrix;
}

void WFillHandle::SetRefCountFill(WRefCountFill* entry) {
    if (entry && entry == m_own.get()) return;
    Forget();
    m_entry = entry;
    if (!entry) return;
    if (const std::shared_ptr<WRCFillList> holder = WRCFillList::GetHolder(entry)) Hold(entry, holder);
}

std::shared_ptr<WRCFillList> WFillHandle::MoveToOtherFillList(std::shared_ptr<WRCFillList> pool) {
    std::shared_ptr<WRCFillList> told = m_pool.lock();
    const std::shared_ptr<WRCFillList> target = pool ? pool : GetActiveFillList();
    if (!target) return told;
    const std::shared_ptr<WRCFillList> holder = m_pooled ? m_holder.lock() : nullptr;
    std::unique_ptr<WRefCountFill> own = holder && IsOnlyHolderIn(holder) ? TakeOut(*holder) : nullptr;
    std::unique_ptr<WRefCountFill> entry = own ? std::move(own) : MakePrivateCopy();
    const WRefCountFill* pooled = nullptr;
    try {
        pooled = target->AddOrGetDuplicate(entry.get(), nullptr);
    } catch (...) {
        if (!m_entry && holder) PutBack(holder, std::move(entry));
        throw;
    }
    entry.release();
    Clear();
    Hold(pooled, target);
    m_pool = pool;
    return told;
}

WRefCountFill* WFillHandle::ExtractRefCountFill() {
    std::unique_ptr<WRefCountFill> entry = std::move(m_own);
    const std::shared_ptr<WRCFillList> holder = m_pooled ? m_holder.lock() : nullptr;
    if (holder) entry = TakeOut(*holder);
    if (!entry) entry = MakePrivateCopy();
    Clear();
    return entry.release();
}
