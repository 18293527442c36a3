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

// Nobody owns the list through m_self: it only tells weak references when the list is gone.
WRCOutlineList::WRCOutlineList()
    : m_impl(std::make_unique<Impl>(*this)), m_self(this, [](WRCOutlineList*) {}) {}

// Before the entries die, so that none is given back to a pool that is going.
WRCOutlineList::~WRCOutlineList() {
    m_self.reset();
}

const WRefCountOutline* WRCOutlineList::AddOrGetDuplicate(WRefCountOutline* outline,
                                                          AbstractFileStream* stream) {
    return m_impl->pool.AddOrGetDuplicate(outline, stream);
}

const WRefCountOutline* WRCOutlineList::AddOrGetCopy(const CGE_OUTLINE& record) {
    const auto isEqual = [&record](const WRefCountOutline& entry) { return entry.EqualsCopyOf(record); };
    if (const WRefCountOutline* entry = m_impl->pool.Find(WRefCountOutline::HashOfCopy(record), isEqual))
        return entry;
    auto outline = std::make_unique<WRefCountOutline>(&record);
    const WRefCountOutline* entry = m_impl->pool.AddOrGetDuplicate(outline.get(), nullptr);
    outline.release();
    return entry;
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

const WRefCountOutline* WRCOutlineList::EditInstance(const WRefCountOutline* entry,
                                                     void (*change)(WRefCountOutline&, void*),
                                                     void* context) {
    return m_impl->pool.EditInstance(entry, [=](WRefCountOutline& outline) { change(outline, context); });
}

const WRefCountOutline* WRCOutlineList::ReplaceInstance(const WRefCountOutline* old,
                                                        WRefCountOutline* outline,
                                                        AbstractFileStream* stream) {
    return m_impl->pool.ReplaceInstance(old, outline, stream);
}

const WRefCountOutline* WRCOutlineList::ReplaceByCopy(const WRefCountOutline* old,
                                                      const CGE_OUTLINE& record) {
    const auto isAnother = [&](const WRefCountOutline& entry) {
        return &entry != old && entry.EqualsCopyOf(record);
    };
    if (const WRefCountOutline* entry = m_impl->pool.Find(WRefCountOutline::HashOfCopy(record), isAnother)) {
        m_impl->pool.RemoveInstance(old);
        return entry;
    }
    auto outline = std::make_unique<WRefCountOutline>(&record);
    const WRefCountOutline* entry = m_impl->pool.ReplaceInstance(old, outline.get(), nullptr);
    outline.release();
    return entry;
}

const WRefCountOutline* WRCOutlineList::AdoptInstance(WRCOutlineList& source, const WRefCountOutline* entry) {
    return m_impl->pool.AdoptInstance(source.m_impl->pool, entry);
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

// The entry is held, so that its pool is there, or on its way out: then nothing is left of m_self.
std::shared_ptr<WRCOutlineList> WRCOutlineList::GetHolder(const WRefCountOutline* entry) noexcept {
    const VyrFOM::InternPoolBase* pool = entry ? VyrFOM::InternPoolBase::PoolOf(*entry) : nullptr;
    return pool ? static_cast<WRCOutlineList*>(pool->GetOwner())->GetUnowned() : nullptr;
}

void WRCOutlineList::EndLoad(AbstractFileStream& stream) {
    VyrFOM::PendingOutlineDuplicates::Instance().EndLoad(stream);
}
