#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "host/base/export.h"

#include "fom/outline_handle.h"

namespace VyrFOM {
class IDuplicationContext;
}

/// Outline handles that travel together; it owns them. Main thread only.
class FOM_API WOutlineHandleList {
public:
    WOutlineHandleList() noexcept = default;
    /// Duplicates every handle through the context; null gives an empty list. Throws what the context throws.
    WOutlineHandleList(const WOutlineHandleList* other, VyrFOM::IDuplicationContext& context);
    ~WOutlineHandleList();
    WOutlineHandleList(const WOutlineHandleList&) = delete;
    WOutlineHandleList& operator=(const WOutlineHandleList&) = delete;

    /// Takes over the handle, also when it throws; null is kept as a place without a handle.
    void Add(WOutlineHandle* handle);
    /// Deletes all handles.
    void DestroyData() noexcept;
    std::size_t GetNumberOfOutlines() const noexcept { return m_handles.size(); }
    /// Null beyond the end.
    const WOutlineHandle* GetOutline(std::size_t i) const noexcept;
    /// The same, to be changed in place.
    WOutlineHandle* GetOutlineToRemap(std::size_t i) noexcept;

private:
    std::vector<std::unique_ptr<WOutlineHandle>> m_handles;
};
