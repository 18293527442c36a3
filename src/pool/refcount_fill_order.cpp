#include <array>
#include <cstring>

#include "host/base/hash.h"

#include "fom/fill_compare.h"
#include "fom/refcount_fill.h"

#include "fill/byte_order.h"
#include "fill/fill_compare.h"
#include "fill/fill_hash.h"

using VyrFOM::CompareBytes;
using VyrFOM::CompareValues;

namespace {

using DigestBytes = std::array<unsigned char, 16>;

/// A digest that was never computed counts as zeros.
DigestBytes BytesOf(const long* digest) noexcept {
    DigestBytes bytes{};
    if (digest) std::memcpy(bytes.data(), digest, bytes.size());
    return bytes;
}

int CompareDigests(const long* a, const long* b) noexcept {
    return CompareBytes(BytesOf(a), BytesOf(b));
}

int CompareBitmapEntries(const CGE_COLORBMPFILL& a, const long* digestA, const CGE_COLORBMPFILL& b,
                         const long* digestB) noexcept {
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    return CompareDigests(digestA, digestB);
}

int CompareVectorEntries(const CGE_VECTORFILL& a, const long* digestA, const CGE_VECTORFILL& b,
                         const long* digestB) noexcept {
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = CompareBytes(a.originalBoundingBox, b.originalBoundingBox); order != 0)
        return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    // Before the digest: the same bytes under another identifier are another fill.
    if (const int order = CompareValues(a.tmpFile, b.tmpFile); order != 0) return order;
    return CompareDigests(digestA, digestB);
}

int CompareTextureEntries(const CGE_TEXTUREFILL& a, const long* digestA, const CGE_TEXTUREFILL& b,
                          const long* digestB) noexcept {
    if (const int order = CompareBytes(a.boundingBox, b.boundingBox); order != 0) return order;
    if (const int order = RCF_CompareTiles(&a.tiling, &b.tiling); order != 0) return order;
    if (const int order = CompareDigests(digestA, digestB); order != 0) return order;
    if (const int order = CompareBytes(a.instance, b.instance); order != 0) return order;
    return RCF_CompareTextureInfo(&a.info, &b.info);
}

/// Records of one kind. Pattern data outside the record is compared by its digest, never by its contents.
int CompareContent(const CGE_FILL& a, const long* digestA, const CGE_FILL& b, const long* digestB,
                   bool mode) {
    switch (a.GetType()) {
        case FillColorBitmap:
            return CompareBitmapEntries(a.ColorBitmap(), digestA, b.ColorBitmap(), digestB);
        case FillVector:
            return CompareVectorEntries(a.Vector(), digestA, b.Vector(), digestB);
        case FillTexture:
            return CompareTextureEntries(a.Texture(), digestA, b.Texture(), digestB);
        default:
            return VyrFOM::CompareFills(a, b, mode);
    }
}

/// Of each name only the length in units, in which equal names agree however their characters are held.
/// Entries that differ in nothing but a name are few.
void HashNames(host::Hasher& hasher, const WRefCountFill::ColorNameMap& names) noexcept {
    for (const auto& [index, name] : names)
        hasher.Word(static_cast<std::uint32_t>(index) | std::uint64_t{host::Utf16Length(name)} << 32);
}

}  // namespace

int WRefCountFill::Compare(const WRefCountFill* other, bool mode) const {
    if (!other) return 1;
    if (other == this) return 0;
    if (const int order = CompareValues<int>(GetFillType(), other->GetFillType()); order != 0) return order;
    if (const int order = CompareValues(m_userData, other->m_userData); order != 0) return order;
    if (m_hasRecord && other->m_hasRecord) {
        const int order =
            CompareContent(*GetCGEFill(), m_digest.get(), *other->GetCGEFill(), other->m_digest.get(), mode);
        if (order != 0) return order;
    }
    return m_colorNames || other->m_colorNames ? CompareColorNameLists(other) : 0;
}

std::uint64_t WRefCountFill::GetHash() const noexcept {
    const CGE_FILL none;  // no record is as good as no fill
    const CGE_FILL& record = m_hasRecord ? *GetCGEFill() : none;
    host::Hasher hasher(m_userData);
    VyrFOM::HashFillInto(hasher, record);
    if (const CGE_PATTERNFILL* pattern = record.Pattern()) {
        std::uint64_t start = 0;
        if (m_digest) std::memcpy(&start, m_digest.get(), sizeof start);
        hasher.Word(start);
        if (record.GetType() == FillVector) hasher.Word(pattern->tmpFile);
    }
    if (m_colorNames) HashNames(hasher, *m_colorNames);
    return hasher.Finish();
}
