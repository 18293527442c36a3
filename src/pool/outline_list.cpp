#include "fom/outline_list.h"

#include "pool/intern_pool.h"

template <>
struct VyrFOM::InternTraits<WRefCountOutline> {
    static void Prepare(WRefCountOutline&) noexcept {}
    static std::uint64_t Hash(const WRefCountOutline& outline) noexcept { return outline.GetHash(); }
    static bool AreEqual(const WRefCountOutline& a, const WRefCountOutline& b) noexcept {
        return a.Compare(&b, false) == 0;
    }
    static int Compare(const WRefCountOutline& a, const WRefCountOutline& b) noexcept {
        return a.Compare(&b, false);
    }
    static void GiveGuid(WRefCountOutline& outline) {
        VyrUtils::Guid& guid = outline.GetCGEOutline()->guid;
        if (guid.IsNil()) guid = VyrUtils::Guid::Generate();
    }
};

class WRCOutlineList::Impl {
public:
    explicit Impl(WRCOutlineList& list) noexcept : pool(list, &list) {}

    VyrFOM::InternPool<WRefCountOutline> pool;
};

WRCOutlineList::WRCOutlineList() : m_impl(std::make_unique<Impl>(*this)) {}

WRCOutlineList::~WRCOutlineList() = default;

const WRefCountOutline* WRCOutlineList::AddOrGetDuplicate(WRefCountOutline* outline,
                                                          AbstractFileStream* stream) {
    return m_impl->pool.AddOrGetDuplicate(outline, stream);
}

bool WRCOutlineList::RemoveInstance(const WRefCountOutline* entry) {
    return m_impl->pool.RemoveInstance(entry);
}

std::size_t WRCOutlineList::RemoveInstances(std::span<const WRefCountOutline* const> entries) {
    return m_impl->pool.RemoveInstances(entries);
}

WRefCountOutline* WRCOutlineList::ExtractInstanceForEditing(const WRefCountOutline* entry) {
    return m_impl->pool.ExtractInstanceForEditing(entry);
}

void WRCOutlineList::Enumerate(Delegate<bool(const WRefCountOutline*)> visit) const {
    if (visit) m_impl->pool.Enumerate(visit);
}

void WRCOutlineList::Enumerate(Delegate<bool(const WRefCountOutline*, void*)> visit, void* user) const {
    if (visit) m_impl->pool.Enumerate([&](const WRefCountOutline* entry) { return visit(entry, user); });
}

std::size_t WRCOutlineList::GetCount() const noexcept {
    return m_impl->pool.GetCount();
}

void WRCOutlineList::EndLoad(AbstractFileStream& stream) {
    VyrFOM::PendingOutlineDuplicates::Instance().EndLoad(stream);
}
