#include "fom/fill_list.h"

#include "fill/fill_compare.h"
#include "fill/fill_hash.h"
#include "pool/intern_pool.h"

namespace {

bool IsPattern(const CGE_FILL& record) noexcept {
    return record.GetType() >= FillColorBitmap && record.GetType() <= FillTexture;
}

/// GetHash of an entry made of this record alone, which is no pattern.
std::uint64_t HashOfCopy(const CGE_FILL& record) noexcept {
    host::Hasher hasher(0);  // its user data
    VyrFOM::HashFillInto(hasher, record);
    return hasher.Finish();
}

/// Whether it compares equal to an entry made of this record alone, which is no pattern.
bool EqualsCopy(const WRefCountFill& entry, const CGE_FILL& record) {
    if (entry.GetUserData() != 0 || entry.GetNumColorNames() != 0) return false;
    const CGE_FILL* pooled = entry.GetCGEFill();
    return pooled ? VyrFOM::CompareFills(*pooled, record, false) == 0 : record.GetType() == FillNone;
}

}  // namespace

template <>
struct VyrFOM::InternTraits<WRefCountFill> {
    static void Prepare(WRefCountFill& fill) {
        if (!fill.GetCGEFill() || !IsPattern(*fill.GetCGEFill())) return;
        fill.CalculateDigestKey();
        fill.OwnPatternData();
    }
    static std::uint64_t Hash(const WRefCountFill& fill) noexcept { return fill.GetHash(); }
    static bool AreEqual(const WRefCountFill& a, const WRefCountFill& b) { return a.Compare(&b, false) == 0; }
    static int Compare(const WRefCountFill& a, const WRefCountFill& b) { return a.Compare(&b, false); }
    static void GiveGuid(WRefCountFill& fill) {
        CGE_FILL* record = fill.GetCGEFill();
        if (record && record->GetGuid().IsNil()) record->SetGuid(VyrUtils::Guid::Generate());
    }
};

class WRCFillList::Impl {
public:
    explicit Impl(WRCFillList& list) noexcept : pool(list, &list) {}

    VyrFOM::InternPool<WRefCountFill> pool;
};

WRCFillList::WRCFillList() : m_impl(std::make_unique<Impl>(*this)) {}

WRCFillList::~WRCFillList() = default;

const WRefCountFill* WRCFillList::AddOrGetDuplicate(WRefCountFill* fill, AbstractFileStream* stream) {
    return m_impl->pool.AddOrGetDuplicate(fill, stream);
}

// A digest is made of an entry's own copy of the data, so patterns take the long way.
const WRefCountFill* WRCFillList::AddOrGetCopy(const CGE_FILL& record) {
    if (!IsPattern(record)) {
        const auto isEqual = [&record](const WRefCountFill& entry) { return EqualsCopy(entry, record); };
        if (const WRefCountFill* entry = m_impl->pool.Find(HashOfCopy(record), isEqual)) return entry;
    }
    auto fill = std::make_unique<WRefCountFill>(&record);
    const WRefCountFill* entry = m_impl->pool.AddOrGetDuplicate(fill.get(), nullptr);
    fill.release();
    return entry;
}

bool WRCFillList::RemoveInstance(const WRefCountFill* entry) {
    return m_impl->pool.RemoveInstance(entry);
}

std::size_t WRCFillList::RemoveInstances(std::span<const WRefCountFill* const> entries) {
    return m_impl->pool.RemoveInstances(entries);
}

WRefCountFill* WRCFillList::ExtractInstanceForEditing(const WRefCountFill* entry) {
    return m_impl->pool.ExtractInstanceForEditing(entry);
}

const WRefCountFill* WRCFillList::EditInstance(const WRefCountFill* entry,
                                               void (*change)(WRefCountFill&, void*), void* context) {
    return m_impl->pool.EditInstance(entry, [=](WRefCountFill& fill) { change(fill, context); });
}

const WRefCountFill* WRCFillList::ReplaceInstance(const WRefCountFill* old, WRefCountFill* fill,
                                                  AbstractFileStream* stream) {
    return m_impl->pool.ReplaceInstance(old, fill, stream);
}

const WRefCountFill* WRCFillList::ReplaceByCopy(const WRefCountFill* old, const CGE_FILL& record) {
    if (!IsPattern(record)) {
        const auto isAnother = [&](const WRefCountFill& entry) {
            return &entry != old && EqualsCopy(entry, record);
        };
        if (const WRefCountFill* entry = m_impl->pool.Find(HashOfCopy(record), isAnother)) {
            m_impl->pool.RemoveInstance(old);
            return entry;
        }
    }
    auto fill = std::make_unique<WRefCountFill>(&record);
    const WRefCountFill* entry = m_impl->pool.ReplaceInstance(old, fill.get(), nullptr);
    fill.release();
    return entry;
}

const WRefCountFill* WRCFillList::AdoptInstance(WRCFillList& source, const WRefCountFill* entry) {
    return m_impl->pool.AdoptInstance(source.m_impl->pool, entry);
}

void WRCFillList::Enumerate(Delegate<bool(const WRefCountFill*)> visit) const {
    if (visit) m_impl->pool.Enumerate(visit);
}

void WRCFillList::Enumerate(Delegate<bool(const WRefCountFill*, void*)> visit, void* user) const {
    if (visit) m_impl->pool.Enumerate([&](const WRefCountFill* entry) { return visit(entry, user); });
}

std::size_t WRCFillList::GetCount() const noexcept {
    return m_impl->pool.GetCount();
}

// The entry is held, so that its pool is there, or on its way out: then the weak reference has expired.
std::shared_ptr<WRCFillList> WRCFillList::GetHolder(const WRefCountFill* entry) noexcept {
    const VyrFOM::InternPoolBase* pool = entry ? VyrFOM::InternPoolBase::PoolOf(*entry) : nullptr;
    return pool ? static_cast<WRCFillList*>(pool->GetOwner())->weak_from_this().lock() : nullptr;
}

void WRCFillList::EndLoad(AbstractFileStream& stream) {
    VyrFOM::PendingFillDuplicates::Instance().EndLoad(stream);
}
