#pragma once

#include <memory>
#include <utility>

#include "fom/fill_handle.h"

// How a handle changes what it holds, for the sources of WFillHandle.
//
// An entry that others hold too stays where it is: the new one is registered first and the old reference
// given back afterwards, so a failure in between changes nothing. An entry that this handle alone holds
// leaves the pool before the new one comes, because the two may be equal in the pool's order and still differ
// in fields that the order does not read (a GUID, an overprint word under an ink); the pool would answer with
// the old one. On failure it goes back into the place that it has just left.

/// Lets `add` register an entry in `pool` and holds the result instead of the current one. False, nothing
/// changed, when `add` yields none.
template <class Add>
bool WFillHandle::Replace(const std::shared_ptr<WRCFillList>& pool, Add&& add) {
    std::unique_ptr<WRefCountFill> old;
    if (IsOnlyHolderIn(pool)) old = TakeOut(*pool);
    const WRefCountFill* fresh = nullptr;
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

/// Takes the entry out, lets `change` change it and registers it. `change` may throw as long as it leaves the
/// entry as it was.
template <class Change>
bool WFillHandle::Edit(Change&& change) {
    const std::shared_ptr<WRCFillList> pool = FindPool();
    if (!pool) return false;
    std::unique_ptr<WRefCountFill> own = IsOnlyHolderIn(pool) ? TakeOut(*pool) : nullptr;
    if (!own) {
        std::unique_ptr<WRefCountFill> copy = MakePrivateCopy();
        std::forward<Change>(change)(*copy);
        return SelectAndRegister(std::move(copy), nullptr);
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
