#include <cstring>

#include "host/base/hash.h"

#include "fom/refcount_fill.h"

void WRefCountFill::SetColorName(const wchar_t* name, unsigned index) {
    if (!name || !*name) {
        RemoveColorName(index);
        return;
    }
    VyrPlatform::VyrStringT<wchar_t> text(name);
    if (!m_colorNames) m_colorNames = std::make_unique<ColorNameMap>();
    m_colorNames->insert_or_assign(static_cast<int>(index), std::move(text));
}

const wchar_t* WRefCountFill::GetColorName(unsigned index) const noexcept {
    if (!m_colorNames) return nullptr;
    const auto at = m_colorNames->find(static_cast<int>(index));
    return at != m_colorNames->end() ? at->second.c_str() : nullptr;
}

void WRefCountFill::RemoveColorName(unsigned index) {
    if (m_colorNames) m_colorNames->erase(static_cast<int>(index));
}

void WRefCountFill::CopyColorNameList(const WRefCountFill* other) {
    if (other == this) return;
    const ColorNameMap* names = other ? other->m_colorNames.get() : nullptr;
    m_colorNames = names ? std::make_unique<ColorNameMap>(*names) : nullptr;
}

int WRefCountFill::CompareColorNameLists(const WRefCountFill* other) const noexcept {
    const unsigned count = GetNumColorNames();
    const unsigned otherCount = other ? other->GetNumColorNames() : 0;
    if (count != otherCount) return count < otherCount ? -1 : 1;
    if (count == 0) return 0;
    auto theirs = other->m_colorNames->begin();
    for (const auto& [index, name] : *m_colorNames) {
        if (index != theirs->first) return index < theirs->first ? -1 : 1;
        if (const int order = name.Compare(theirs->second); order != 0) return order;
        ++theirs;
    }
    return 0;
}
