#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "fom/fill_handle.h"

// How a handle changes what it holds, for the sources of WFillHandle.
//
// An entry that others hold too stays as it is: the handle registers a changed copy and gives its reference
// back. An entry that this handle alone holds is changed where it is.

/// Changes the entry, or a copy of it, and registers it. `change` may throw as long as it leaves the entry as
/// it was, and does not use the pool.
template <class Change>
bool WFillHandle::Edit(Change&& change) {
    const std::shared_ptr<WRCFillList> pool = FindPool();
    if (!pool) return false;
    if (IsHeldBy(pool)) {
        const auto call = [](WRefCountFill& entry, void* context) {
            (*static_cast<std::remove_reference_t<Change>*>(context))(entry);
        };
        const WRefCountFill* edited =
            pool->EditInstance(m_entry, call, const_cast<void*>(static_cast<const void*>(&change)));
        if (edited) {
            m_entry = edited;
            return true;
        }
    }
    std::unique_ptr<WRefCountFill> copy = MakePrivateCopy();
    std::forward<Change>(change)(*copy);
    return SelectAndRegister(std::move(copy), nullptr);
}
