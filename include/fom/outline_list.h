#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "host/base/delegate.h"
#include "host/base/export.h"
#include "host/base/thread_lock.h"
#include "host/gfx/outline.h"
#include "host/stream/archive_object.h"

#include "fom/intern_node.h"

/// An outline that a pool stores once and many holders share; see WRefCountFill for the rules.
class FOM_API WRefCountOutline final : public ArchiveObject, public VyrFOM::InternNode {
public:
    /// A copy of the record; null gives no outline.
    explicit WRefCountOutline(const CGE_OUTLINE* record);
    WRefCountOutline(const WRefCountOutline& other);
    ~WRefCountOutline() override;
    WRefCountOutline& operator=(const WRefCountOutline&) = delete;

    void ReadFrom(AbstractFileStream& stream) override;
    void WriteTo(AbstractFileStream& stream) const override;
    const char* getClassName() const override { return "WRefCountOutline"; }

    long AddReference(long n) noexcept { return AddToCount(static_cast<std::int32_t>(n)); }
    long RemoveReference(long n) noexcept {
        return AddToCount(static_cast<std::int32_t>(0 - static_cast<unsigned long>(n)));
    }
    long GetReference() const noexcept { return m_count.load(std::memory_order_acquire); }
    VyrUtils::Guid GetGuid() const noexcept { return m_record.guid; }
    const CGE_OUTLINE* GetCGEOutline() const noexcept { return &m_record; }
    CGE_OUTLINE* GetCGEOutline() noexcept { return &m_record; }

    int Compare(const WRefCountOutline* other, bool mode) const noexcept;
    std::uint64_t GetHash() const noexcept;

private:
    CGE_OUTLINE m_record;
};

/// A document's pool of outlines; the same pool as WRCFillList over another type.
class FOM_API WRCOutlineList : public ThreadLock {
public:
    WRCOutlineList();
    ~WRCOutlineList();

    const WRefCountOutline* AddOrGetDuplicate(WRefCountOutline* outline, AbstractFileStream* stream);
    bool RemoveInstance(const WRefCountOutline* entry);
    std::size_t RemoveInstances(std::span<const WRefCountOutline* const> entries);
    WRefCountOutline* ExtractInstanceForEditing(const WRefCountOutline* entry);
    void Enumerate(Delegate<bool(const WRefCountOutline*)> visit) const;
    void Enumerate(Delegate<bool(const WRefCountOutline*, void*)> visit, void* user) const;
    std::size_t GetCount() const noexcept;
    static void EndLoad(AbstractFileStream& stream);

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

/// The original pool lives as long as the process; the caller keeps ownership of a pool that it installs. No
/// lock.
FOM_API WRCOutlineList* GetActiveOutlineList();
FOM_API void SetActiveOutlineList(WRCOutlineList* list);
FOM_API WRCOutlineList* GetOriginalActiveOutlineList();
