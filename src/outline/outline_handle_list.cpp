#include "fom/outline_handle_list.h"

#include "fom/duplication.h"

WOutlineHandleList::WOutlineHandleList(const WOutlineHandleList* other,
                                       VyrFOM::IDuplicationContext& context) {
    if (!other) return;
    m_handles.reserve(other->m_handles.size());
    for (const auto& handle : other->m_handles)
        m_handles.emplace_back(context.DuplicateOutlineHandle(handle.get()));
}

WOutlineHandleList::~WOutlineHandleList() = default;

void WOutlineHandleList::Add(WOutlineHandle* handle) {
    std::unique_ptr<WOutlineHandle> taken(handle);
    m_handles.push_back(std::move(taken));
}

void WOutlineHandleList::DestroyData() noexcept {
    m_handles.clear();
}

const WOutlineHandle* WOutlineHandleList::GetOutline(std::size_t i) const noexcept {
    return i < m_handles.size() ? m_handles[i].get() : nullptr;
}

WOutlineHandle* WOutlineHandleList::GetOutlineToRemap(std::size_t i) noexcept {
    return i < m_handles.size() ? m_handles[i].get() : nullptr;
}
