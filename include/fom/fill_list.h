#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "host/base/delegate.h"
#include "host/base/export.h"
#include "host/base/thread_lock.h"

#include "fom/pooled_reference.h"
#include "fom/refcount_fill.h"

/// A document's pool of fills, in which equal fills are stored once. It owns its entries. Safe for concurrent
/// use.
///
/// It behaves as a set ordered by WRefCountFill::Compare(…, false) < 0. Made only under shared ownership, so
/// that handles can hold it weakly.
class FOM_API WRCFillList : public ThreadLock, public std::enable_shared_from_this<WRCFillList> {
public:
    WRCFillList();
    /// Deletes every entry still pooled, whatever its count.
    ~WRCFillList();

    /// Takes over `fill`: pools it, or disposes of it when an equal entry is pooled. Returns the surviving
    /// entry with one more reference, which the caller gives back with RemoveInstance; null for null. An
    /// entry that is pooled here already, held by the caller, is returned again. A record without a GUID gets
    /// one when it is pooled or parked. With `stream` a loser is parked until EndLoad, since pointers read
    /// from that stream may lead to it; one that is parked already stays so. Throws bad_alloc, and
    /// logic_error for an entry of another pool (asserted), with pools and counts as they were; `fill` stays
    /// the caller's then.
    const WRefCountFill* AddOrGetDuplicate(WRefCountFill* fill, AbstractFileStream* stream);
    /// The same for a record that the caller keeps: an entry is made only when none is equal. Equal to
    /// AddOrGetDuplicate(new WRefCountFill(&record), nullptr), and much cheaper on a hit.
    const WRefCountFill* AddOrGetCopy(const CGE_FILL& record);
    /// Drops the caller's reference; the last one removes and deletes the entry. False for null and for an
    /// entry that is not in this pool and whose last reference this was (it stays alive, the caller's).
    /// Whatever the pool, an entry whose count is not 1 is counted down, and that is all.
    bool RemoveInstance(const WRefCountFill* entry);
    /// RemoveInstance of each, several times faster for many: one lock serves up to 64, and their loads from
    /// memory overlap. Null is skipped. Returns how many RemoveInstance would have answered true for.
    std::size_t RemoveInstances(std::span<const WRefCountFill* const> entries);
    /// Gives up the caller's reference for a private entry that the caller owns, with count 0: the entry
    /// itself, taken out of the pool, when the caller was its only holder, otherwise a copy. Null for null
    /// and for an entry that is not in this pool and whose last reference this was. Throws bad_alloc, with
    /// the reference still the caller's.
    WRefCountFill* ExtractInstanceForEditing(const WRefCountFill* entry);

    /// Visits the entries in pool order until the delegate returns false, under the read lock. The delegate
    /// must not put entries into this pool or take any out: that is asserted in debug builds and refused in
    /// release ones (AddOrGetDuplicate throws logic_error, RemoveInstance and ExtractInstanceForEditing
    /// return false and null with the reference kept). Finding an equal entry, giving up a reference that is
    /// not the last one and enumerating again are allowed. An unset delegate visits nothing. Two threads that
    /// each enumerate a pool and look into the other's must not do so while others write to both.
    void Enumerate(Delegate<bool(const WRefCountFill*)> visit) const;
    void Enumerate(Delegate<bool(const WRefCountFill*, void*)> visit, void* user) const;

    /// Entries in the pool.
    std::size_t GetCount() const noexcept;
    /// The pool that holds the entry now; null for null and for an entry that is in none. The caller holds
    /// the entry.
    static std::shared_ptr<WRCFillList> GetHolder(const WRefCountFill* entry) noexcept;

    /// Deletes the losers parked for `stream`. Safe from any thread.
    static void EndLoad(AbstractFileStream& stream);

private:
    template <class, class>
    friend class VyrFOM::PooledReference;

    // What a handle does with the entry that it holds here, each in one step for all other threads. On
    // failure, which passes as an exception, nothing has changed.

    /// ExtractInstanceForEditing, `change`, AddOrGetDuplicate. Null, nothing changed, when others hold the
    /// entry. `change` may throw as long as it leaves the entry as it was; it must not use the pool.
    const WRefCountFill* EditInstance(const WRefCountFill* entry, void (*change)(WRefCountFill&, void*),
                                      void* context);
    /// AddOrGetDuplicate(fill, stream) and AddOrGetCopy(record), with the reference on `old` given up. An
    /// `old` without other holders goes first: the two may be equal in the pool's order and still differ in
    /// fields that the order does not read (a GUID, an overprint word under an ink).
    const WRefCountFill* ReplaceInstance(const WRefCountFill* old, WRefCountFill* fill,
                                         AbstractFileStream* stream);
    const WRefCountFill* ReplaceByCopy(const WRefCountFill* old, const CGE_FILL& record);
    /// Takes the entry over from `source`. Null, nothing changed, when others hold it.
    const WRefCountFill* AdoptInstance(WRCFillList& source, const WRefCountFill* entry);

    class Impl;
    std::unique_ptr<Impl> m_impl;
};

/// The process-wide pools. The original one lives as long as the process; the active one is the original
/// until another is set. No lock is taken: they belong to the host's main thread.
FOM_API std::shared_ptr<WRCFillList> GetActiveFillList();
FOM_API std::shared_ptr<WRCFillList> FOMGetActiveFillList();
FOM_API void SetActiveFillList(std::shared_ptr<WRCFillList> list);
FOM_API std::shared_ptr<WRCFillList> GetOriginalActiveFillList();
