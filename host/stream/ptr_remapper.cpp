#include "host/stream/ptr_remapper.h"

#include "host/base/memory.h"

namespace udi {

PtrRemapper::~PtrRemapper() = default;

std::uint32_t PersistentPtrRemapper::MapPtr(const void* object, int kind) {
    if (!object) return 0;
    const Object key(object, kind);
    const auto [place, isNew] = m_ids.try_emplace(key, 0u);
    if (!isNew) return place->second;
    try {
        m_objects.push_back(key);
    } catch (...) {
        m_ids.erase(place);
        throw;
    }
    return place->second = static_cast<std::uint32_t>(m_objects.size());
}

void* PersistentPtrRemapper::UnmapPtr(std::uint32_t id, int kind) {
    if (id == 0) return nullptr;
    if (id <= m_objects.size()) {
        const auto& [object, objectKind] = m_objects[id - 1];
        if (objectKind == kind) return const_cast<void*>(object);
    }
    return kind == kPtrBlock ? host::UnresolvedBlock() : nullptr;
}

}  // namespace udi
