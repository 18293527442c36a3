#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "host/base/delegate.h"
#include "host/base/export.h"
#include "host/base/thread_lock.h"

#include "fom/pooled_reference.h"
#include "fom/refcount_outline.h"

/// A document's pool of outlines, in which equal outlines are stored once: WRCFillList for outlines, with the
/// same rules throughout (fom/fill_list.h). Unlike that one it is owned by whoever made it.
class FOM_API WRCOutlineList : public ThreadLock {
public:
    WRCOutlineList();
    /// Deletes every entry still pooled, whatever its count.
    ~WRCOutlineList();
    WRCOutlineList(const WRCOutlineList&) = delete;
    WRCOutlineList& operator=(const WRCOutlineList&) = delete;

    const WRefCountOutline* AddOrGetDuplicate(WRefCountOutline* outline, AbstractFileStream* stream);
    /// The same for a record that the caller keeps: an entry is made only when none is equal.
    const WRefCountOutline* AddOrGetCopy(const CGE_OUTLINE& record);
    bool RemoveInstance(const WRefCountOutline* entry);
    std::size_t RemoveInstances(std::span<const WRefCountOutline* const> entries);
    WRefCountOutline* ExtractInstanceForEditing(const WRefCountOutline* entry);
    void Enumerate(Delegate<bool(const WRefCountOutline*)> visit) const;
    void Enumerate(Delegate<bool(const WRefCountOutline*, void*)> visit, void* user) const;
    std::size_t GetCount() const noexcept;
    static void EndLoad(AbstractFileStream& stream);

    /// A reference that does not own the pool; weak ones made of it expire when the pool dies. Main thread
    /// only.
    std::shared_ptr<WRCOutlineList> GetUnowned() const noexcept { return m_self; }
    /// The pool that holds the entry now, not owned; null for null and for an entry that is in none. The
    /// caller holds the entry.
    static std::shared_ptr<WRCOutlineList> GetHolder(const WRefCountOutline* entry) noexcept;

private:
    template <class, class>
    friend class VyrFOM::PooledReference;

    // As the same functions of WRCFillList.
    const WRefCountOutline* EditInstance(const WRefCountOutline* entry,
                                         void (*change)(WRefCountOutline&, void*), void* context);
    const WRefCountOutline* ReplaceInstance(const WRefCountOutline* old, WRefCountOutline* outline,
                                            AbstractFileStream* stream);
    const WRefCountOutline* ReplaceByCopy(const WRefCountOutline* old, const CGE_OUTLINE& record);
    const WRefCountOutline* AdoptInstance(WRCOutlineList& source, const WRefCountOutline* entry);

    class Impl;
    std::unique_ptr<Impl> m_impl;
    std::shared_ptr<WRCOutlineList> m_self;
};

/// The process-wide pools. The original one lives as long as the process. The caller keeps ownership of a
/// pool that it makes the active one; when that dies, and for null, the original becomes the active one
/// again. No lock is taken: they belong to the host's main thread.
FOM_API WRCOutlineList* GetActiveOutlineList();
FOM_API void SetActiveOutlineList(WRCOutlineList* list);
FOM_API WRCOutlineList* GetOriginalActiveOutlineList();
