#include <utility>

#include "fill/fill_handle_edit.h"
#include "fill/fill_handle_entries.h"

std::shared_ptr<WRCFillList> WFillHandle::FindPool() const {
    std::shared_ptr<WRCFillList> pool = m_pool.lock();
    if (!pool) pool = GetActiveFillList();
    return pool;
}

bool WFillHandle::IsHeldBy(const std::shared_ptr<WRCFillList>& pool) const noexcept {
    return m_pooled && !m_holder.owner_before(pool) && !pool.owner_before(m_holder);
}

/// A copy as an edit starts from: of an entry with other holders without its user data.
std::unique_ptr<WRefCountFill> WFillHandle::MakePrivateCopy() const {
    const WRefCountFill* entry = Entry();
    if (!entry) return std::make_unique<WRefCountFill>(false);
    const bool isShared = m_pooled && entry->GetReference() > 1;
    return isShared ? std::make_unique<WRefCountFill>(*entry) : CopyWithUserData(*entry);
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
    if (IsHeldBy(pool)) {
        m_entry = pool->ReplaceInstance(m_entry, entry.get(), stream);
        entry.release();
        return true;
    }
    const WRefCountFill* pooled = pool->AddOrGetDuplicate(entry.get(), stream);
    entry.release();
    Clear();
    Hold(pooled, pool);
    return true;
}

void WFillHandle::RegisterCopyOf(const CGE_FILL& record) {
    const std::shared_ptr<WRCFillList> pool = FindPool();
    if (!pool) return;
    if (IsHeldBy(pool)) {
        m_entry = pool->ReplaceByCopy(m_entry, record);
        return;
    }
    const WRefCountFill* pooled = pool->AddOrGetCopy(record);
    Clear();
    Hold(pooled, pool);
}

void WFillHandle::Copy(const WFillHandle& other) {
    if (this == &other) return;
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
    Forget();
    m_entry = entry;
    if (!entry) return;
    if (const std::shared_ptr<WRCFillList> holder = WRCFillList::GetHolder(entry)) Hold(entry, holder);
}

// An entry of its own moves whole; what others hold too stays where it is.
std::shared_ptr<WRCFillList> WFillHandle::MoveToOtherFillList(std::shared_ptr<WRCFillList> pool) {
    std::shared_ptr<WRCFillList> told = m_pool.lock();
    const std::shared_ptr<WRCFillList> target = pool ? pool : GetActiveFillList();
    if (!target) return told;
    const std::shared_ptr<WRCFillList> holder = m_pooled ? m_holder.lock() : nullptr;
    const bool isThere = holder == target && m_entry->GetReference() == 1;
    if (!isThere) {
        const bool mayMove = holder && holder != target;
        const WRefCountFill* pooled = mayMove ? target->AdoptInstance(*holder, m_entry) : nullptr;
        if (pooled) {
            Forget();
        } else {
            std::unique_ptr<WRefCountFill> copy = MakePrivateCopy();
            pooled = target->AddOrGetDuplicate(copy.get(), nullptr);
            copy.release();
            Clear();
        }
        Hold(pooled, target);
    }
    m_pool = pool;
    return told;
}

WRefCountFill* WFillHandle::ExtractRefCountFill() {
    std::unique_ptr<WRefCountFill> entry;
    if (const std::shared_ptr<WRCFillList> holder = m_pooled ? m_holder.lock() : nullptr) {
        entry.reset(holder->ExtractInstanceForEditing(m_entry));
        // The pool refuses changes: the reference is kept, and the caller gets a copy.
        const bool isRefused = !entry && WRCFillList::GetHolder(m_entry) == holder;
        if (!isRefused) Forget();
    }
    if (!entry) entry = MakePrivateCopy();
    Clear();
    return entry.release();
}
