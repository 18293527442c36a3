#include "host/base/hash.h"

#include "fom/outline_list.h"

#include "pool/pending_duplicates.h"

WRefCountOutline::WRefCountOutline(const CGE_OUTLINE* record) {
    if (record) m_record = *record;
}

WRefCountOutline::WRefCountOutline(const WRefCountOutline& other)
    : ArchiveObject(other), InternNode(other), m_record(other.m_record) {}

WRefCountOutline::~WRefCountOutline() {
    VyrFOM::PendingOutlineDuplicates::Leave(*this);
}

int WRefCountOutline::Compare(const WRefCountOutline* other, bool mode) const noexcept {
    if (!other) return 1;
    return other == this ? 0 : CGE_OUTLINE::CompareTo(m_record, other->m_record, mode);
}

std::uint64_t WRefCountOutline::GetHash() const noexcept {
    host::Hasher hasher;
    m_record.HashInto(hasher);
    return hasher.Finish();
}

// Bodies have no stored form yet: a document that asks for one learns that it is not good.
void WRefCountOutline::ReadFrom(AbstractFileStream& stream) {
    stream.SetGood(false);
}

void WRefCountOutline::WriteTo(AbstractFileStream& stream) const {
    stream.SetGood(false);
}
