#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "host/base/export.h"
#include "host/base/wstring.h"
#include "host/color/context.h"
#include "host/gfx/fill.h"
#include "host/stream/archive_object.h"
#include "host/stream/ptr_remapper.h"

#include "fom/intern_node.h"

namespace VyrFOM {
template <class Entry>
struct InternTraits;
}

/// A fill that a pool stores once and many holders share. Made by a caller with count 0 and handed to
/// WRCFillList::AddOrGetDuplicate; while it is pooled its content does not change.
///
/// Counts may be changed from any thread. Everything else is used by one thread at a time until the entry is
/// pooled, and is only read from then on.
class FOM_API WRefCountFill final : public ArchiveObject, public VyrFOM::InternNode {
public:
    using ColorNameMap = std::map<int, VyrPlatform::VyrStringT<wchar_t>>;

    /// Black uniform (CMYK 0, 0, 0, 100, default screen) or no fill.
    explicit WRefCountFill(bool solid);
    /// A copy of the record (null: kind 0) with, where it is given, a digest of 16 bytes. A pattern record's
    /// block names the new entry as its owner.
    explicit WRefCountFill(const CGE_FILL* record, const long* digest = nullptr);
    /// Copies record, digest and colour names. Not the count and, deliberately, not the user data.
    WRefCountFill(const WRefCountFill& other);
    ~WRefCountFill() override;
    WRefCountFill& operator=(const WRefCountFill&) = delete;

    /// Replaces record and digest by copies of the other's; colour names and user data are not copied, and
    /// the names that were here are gone. Copying an entry onto itself changes nothing.
    void Copy(const WRefCountFill& other);

    /// Replaces the record and the user data from the form that the document's version has; the count is 0
    /// then. Digest and colour names are not stored, and are gone then. Faults show in the stream's good
    /// flag, and what could be read is kept. Throws bad_alloc, with the entry as it was. Main thread only, as
    /// is writing.
    void ReadFrom(AbstractFileStream& stream) override;
    void WriteTo(AbstractFileStream& stream) const override;
    /// The same within a document, whose objects have one numbering.
    void ReadFrom(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) const;
    const char* getClassName() const override { return "WRefCountFill"; }

    /// Atomic, wrapping at 32 bits; the new count.
    long AddReference(long n) noexcept { return AddToCount(static_cast<std::int32_t>(n)); }
    long RemoveReference(long n) noexcept {
        return AddToCount(static_cast<std::int32_t>(0 - static_cast<unsigned long>(n)));
    }
    long GetReference() const noexcept { return m_count.load(std::memory_order_acquire); }

    void SetUserData(unsigned value) noexcept { m_userData = value; }
    unsigned GetUserData() const noexcept { return m_userData; }

    /// The record in place; null only after DeallocateFillMemory, and in a copy of such an entry.
    const CGE_FILL* GetCGEFill() const noexcept { return m_hasRecord ? &m_storage.record : nullptr; }
    CGE_FILL* GetCGEFill() noexcept { return m_hasRecord ? &m_storage.record : nullptr; }
    /// A copy that the caller owns and frees with RCF_DeleteFill; null without a record.
    CGE_FILL* GetCGEFillCopy() const;
    /// 0 without a record.
    CgeFillType GetFillType() const noexcept { return m_hasRecord ? m_storage.record.GetType() : FillNone; }
    VyrUtils::Guid GetGuid() const noexcept {
        return m_hasRecord ? m_storage.record.GetGuid() : VyrUtils::Guid();
    }

    /// 16 raw bytes, whatever the size of `long`; null when none.
    const long* GetDigestKey() const noexcept { return m_digest.get(); }
    long* GetDigestKey() noexcept { return m_digest.get(); }
    /// Takes over an array made by NewDigestKey (null: none).
    void SetDigestKey(long* key) noexcept {
        if (key != m_digest.get()) m_digest.reset(key);
    }
    /// A new digest of 16 bytes, copied from `from` or all zero.
    static long* NewDigestKey(const void* from = nullptr);
    /// Computes the MD5 digest of the data outside the record (kinds 9, 10 and 11) unless there is one. What
    /// cannot be read leaves an all-zero digest; so does data whose stream does not open. It says nothing of
    /// an image's shape. Other kinds get no digest. Throws bad_alloc, with no digest set.
    void CalculateDigestKey();

    /// The pool's order: kind, user data, content, digest, then colour names. `mode` leaves out the identity
    /// block of a uniform colour. Negative, 0 or positive; +1 for null.
    int Compare(const WRefCountFill* other, bool mode) const;
    bool IsEquivalentTo(const WRefCountFill* other, bool mode) const { return Compare(other, mode) == 0; }
    /// Entries equal under Compare(…, false) have equal hashes. Reads nothing that Compare does not.
    std::uint64_t GetHash() const noexcept;

    /// Colour names by colour index. A map without names counts as no map.
    void SetColorName(const wchar_t* name, unsigned index);
    const wchar_t* GetColorName(unsigned index) const noexcept;
    unsigned GetNumColorNames() const noexcept {
        return m_colorNames ? static_cast<unsigned>(m_colorNames->size()) : 0;
    }
    void RemoveColorName(unsigned index);
    void CopyColorNameList(const WRefCountFill* other);
    void DeleteAndFreeColorNameList() noexcept { m_colorNames.reset(); }
    int CompareColorNameLists(const WRefCountFill* other) const noexcept;
    /// Null when no name was ever set.
    const ColorNameMap* GetColorNameList() const noexcept { return m_colorNames.get(); }
    /// Takes over the map as it is (null: none). The map that is here already is left alone.
    void SetColorNameList(ColorNameMap* names) noexcept {
        if (names != m_colorNames.get()) m_colorNames.reset(names);
    }

    /// Frees the record and makes a fresh, empty one of the kind; returns the record's size in bytes.
    unsigned ReallocateFillMemory(CgeFillType kind);
    void DeallocateFillMemory() noexcept;
    /// Record, digest and colour names.
    void DeallocateMemory() noexcept;

    /// Each replaces the record by one of its kind with the library's defaults.
    void CreateDefaultNoFill();
    void CreateDefaultSolidFill();
    void CreateDefaultGradientFill();
    /// A record that is of kind 7 already is cleared in place.
    void CreateDefaultMonoBitmapFill();
    void CreateDefaultVectorFill(const ColorContext& context);
    void CreateDefaultColorBitmapFill();
    void CreateDefaultHatchFill();
    void CreateDefaultTextureFill();
    void CreateDefaultPostscriptFill();
    /// Null for either: the default colour or screen.
    void CreateSolidFill(const CLR_COLORSPEC* color, const CLR_SCREENSPEC* screen);
    /// A linear one runs across the object, the others lie in its middle and reach its edges. False, with the
    /// record as it was, for a null colour or a type that is not a fountain's.
    bool CreateGradientFill(ClrFountainFillType type, const CLR_COLORSPEC* from, const CLR_COLORSPEC* to,
                            unsigned steps);
    void SetToNoFill() { CreateDefaultNoFill(); }
    void SetToDefaultFill() { CreateDefaultSolidFill(); }
    /// The default of any kind, as the pattern dialogs start from; an unknown kind gives kind 0.
    void CreateFillForPatternDlg(CgeFillType kind, const ColorContext& context);

    /// 1 stores on, anything else off, in the kind's own overprint field (uniform, fountain, mono bitmap,
    /// hatch and all its lines). False, nothing stored, for other kinds.
    bool SetOverprintFlag(OVERPRINT_FLAG flag);
    /// On, off, or none for kinds without the field.
    OVERPRINT_FLAG GetOverprintFlag() const noexcept;

private:
    /// Replaces the record, digest and colour names; null gives no record. Both may point into this entry.
    void Copy(const CGE_FILL* record, const long* digest);
    /// Names this entry in the block of a pattern fill.
    void OwnPatternData() noexcept;
    friend struct VyrFOM::InternTraits<WRefCountFill>;

    void WriteVersion1200(AbstractFileStream& stream, const CGE_FILL& record,
                          udi::PtrRemapper& remapper) const;
    static CGE_FILL ReadVersion1200(AbstractFileStream& stream, unsigned& userData,
                                    udi::PtrRemapper& remapper);
    /// Makes `record` this entry's, instead of the one that is there.
    CGE_FILL& InstallRecord(CGE_FILL&& record) noexcept;

    // In the order in which a lookup reads them, in as few cache lines as can be. The record lies in the
    // entry: one allocation for both.
    bool m_hasRecord = false;
    unsigned m_userData = 0;
    std::unique_ptr<ColorNameMap> m_colorNames;
    std::unique_ptr<long[]> m_digest;
    union Storage {
        Storage() noexcept {}
        ~Storage() {}
        CGE_FILL record;  // alive while m_hasRecord
    } m_storage;
};
