#include "fom/refcount_fill.h"

#include <cstring>
#include <memory>
#include <utility>

#include "fom/fill_record.h"

#include "pool/fill_digest.h"
#include "pool/pending_duplicates.h"

namespace {

constexpr std::size_t kDigestBytes = 16;

CGE_FILL CopyOfRecord(const CGE_FILL& record, const WRefCountFill* owner) {
    if (!record.Pattern()) return record;
    CGE_FILL copy;
    RCF_CopyFill(&copy, &record, owner);
    return copy;
}

}  // namespace

WRefCountFill::WRefCountFill(bool solid) {
    CGE_FILL& record = InstallRecord(CGE_FILL(solid ? FillUniform : FillNone));
    if (solid) record.EditUniform().color.MakeCMYK(0, 0, 0, 100);
}

// The record comes last in both constructors: what fails before it leaves none to free.
WRefCountFill::WRefCountFill(const CGE_FILL* record, const long* digest)
    : m_digest(digest ? NewDigestKey(digest) : nullptr) {
    InstallRecord(record ? CopyOfRecord(*record, this) : CGE_FILL());
}

WRefCountFill::WRefCountFill(const WRefCountFill& other)
    : ArchiveObject(other),
      InternNode(other),
      m_colorNames(other.m_colorNames ? std::make_unique<ColorNameMap>(*other.m_colorNames) : nullptr),
      m_digest(other.m_digest ? NewDigestKey(other.m_digest.get()) : nullptr) {
    if (const CGE_FILL* record = other.GetCGEFill()) InstallRecord(CopyOfRecord(*record, this));
}

WRefCountFill::~WRefCountFill() {
    VyrFOM::PendingFillDuplicates::Leave(*this);
    DeallocateMemory();
}

void WRefCountFill::Copy(const WRefCountFill& other) {
    if (this != &other) Copy(other.GetCGEFill(), other.GetDigestKey());
}

// Everything is copied before anything is freed: the arguments may be this entry's own.
void WRefCountFill::Copy(const CGE_FILL* record, const long* digest) {
    CGE_FILL newRecord = record ? CopyOfRecord(*record, this) : CGE_FILL();
    std::unique_ptr<long[]> newDigest(digest ? NewDigestKey(digest) : nullptr);
    DeallocateMemory();
    if (record) InstallRecord(std::move(newRecord));
    m_digest = std::move(newDigest);
}

CGE_FILL& WRefCountFill::InstallRecord(CGE_FILL&& record) noexcept {
    CGE_FILL* installed = GetCGEFill();
    if (installed) {
        *installed = std::move(record);
    } else {
        installed = std::construct_at(&m_storage.record, std::move(record));
        m_hasRecord = true;
    }
    return *installed;
}

void WRefCountFill::DeallocateFillMemory() noexcept {
    if (m_hasRecord) std::destroy_at(&m_storage.record);
    m_hasRecord = false;
}

CGE_FILL* WRefCountFill::GetCGEFillCopy() const {
    return m_hasRecord ? new CGE_FILL(*GetCGEFill()) : nullptr;
}

long* WRefCountFill::NewDigestKey(const void* from) {
    constexpr std::size_t longs = (kDigestBytes + sizeof(long) - 1) / sizeof(long);
    auto* key = new long[longs]();
    if (from) std::memcpy(key, from, kDigestBytes);
    return key;
}

void WRefCountFill::CalculateDigestKey() {
    const CGE_PATTERNFILL* pattern = m_hasRecord ? GetCGEFill()->Pattern() : nullptr;
    if (m_digest || !pattern) return;
    const bool isVector = GetFillType() == FillVector;
    const host::Md5::Digest digest =
        isVector ? VyrFOM::DigestOfTmpFile(pattern->tmpFile) : VyrFOM::DigestOfTmpImage(pattern->tmpFile);
    m_digest.reset(NewDigestKey(digest.data()));
}

unsigned WRefCountFill::ReallocateFillMemory(CgeFillType kind) {
    InstallRecord(CGE_FILL(kind));
    return sizeof(CGE_FILL);
}

void WRefCountFill::DeallocateMemory() noexcept {
    DeallocateFillMemory();
    m_digest.reset();
    m_colorNames.reset();
}

void WRefCountFill::OwnPatternData() noexcept {
    const CGE_PATTERNFILL* pattern = m_hasRecord ? GetCGEFill()->Pattern() : nullptr;
    if (pattern && pattern->patternData) GetCGEFill()->EditPattern()->SetOwner(this);
}
