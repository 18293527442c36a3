#pragma once

#include <memory>

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/gfx/enums.h"
#include "host/gfx/outline.h"
#include "host/stream/archive_object.h"
#include "host/stream/ptr_remapper.h"

#include "fom/intern_node.h"

class CLinePatternPreset;

/// An outline that a pool (WRCOutlineList) stores once and many holders share.
///
/// Whoever makes an entry owns it until it is handed to a pool. While it is pooled its content must not
/// change: take it out first (ExtractInstanceForEditing). The count is atomic; everything else belongs to one
/// thread at a time. What throws bad_alloc leaves the entry as it was.
///
/// Arrowheads of the record are handles that SUDIRegisterArrow gave, or that the caller keeps alive.
class FOM_API WRefCountOutline final : public ArchiveObject, public VyrFOM::InternNode {
public:
    /// RGB black, width 50, round nib; kind 2, or 1 when it is not to be visible.
    explicit WRefCountOutline(bool visible);
    /// Kind 2 in the preset's pattern (null: unbroken), with the default screen. Arrow styles as in
    /// SetLeftArrowStyle; one that does not exist gives no arrowhead. A null colour stays as in an empty
    /// record.
    WRefCountOutline(unsigned width, const CLR_COLORSPEC* color, const CLinePatternPreset* preset,
                     unsigned leftArrow, unsigned rightArrow);
    /// A copy of the record; null gives no outline. With `duplicateArrows` the entry gets arrowheads of its
    /// own, so that the record's may be freed.
    explicit WRefCountOutline(const CGE_OUTLINE* record, bool duplicateArrows = false);
    /// Copies the record, but not the colour name.
    WRefCountOutline(const WRefCountOutline& other);
    ~WRefCountOutline() override;
    WRefCountOutline& operator=(const WRefCountOutline&) = delete;
    /// Takes over the source's colour with its name, the rest, or both; false for neither. Without the colour
    /// this entry's own colour and name stay. The GUID counts as the rest.
    bool Copy(const WRefCountOutline& source, bool copyColor, bool copyRest);

    /// Replaces the record from the form that the document's version has; the count is 0 then.
    /// The colour name is not stored, and is gone then. Faults show in the stream's good flag, and what could
    /// be read is kept. Throws bad_alloc, with the entry as it was. Main thread only, as is writing.
    void ReadFrom(AbstractFileStream& stream) override;
    void WriteTo(AbstractFileStream& stream) const override;
    /// The same within a document, whose objects have one numbering.
    void ReadFrom(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream, udi::PersistentPtrRemapper& remapper) const;
    const char* getClassName() const override { return "WRefCountOutline"; }

    /// Both return the new count.
    long AddReference(long n) noexcept { return AddToCount(static_cast<std::int32_t>(n)); }
    long RemoveReference(long n) noexcept {
        return AddToCount(static_cast<std::int32_t>(0 - static_cast<unsigned long>(n)));
    }
    long GetReference() const noexcept { return m_count.load(std::memory_order_acquire); }
    VyrUtils::Guid GetGuid() const noexcept { return m_record.guid; }
    const CGE_OUTLINE* GetCGEOutline() const noexcept { return &m_record; }
    CGE_OUTLINE* GetCGEOutline() noexcept { return &m_record; }
    /// Freed with DeleteCGEOutlineCopy.
    CGE_OUTLINE* GetCGEOutlineCopy() const;
    static CGE_OUTLINE* CreateCGEOutline();
    static void DeleteCGEOutlineCopy(CGE_OUTLINE* record) noexcept;

    /// At most 31 UTF-16 units are kept; null and empty leave no name.
    void SetColorName(const wchar_t* name);
    /// A buffer of 32 characters, good until the name changes; null without a name.
    const wchar_t* GetColorName() const noexcept;

    /// Stores on for OVERPRINT_ON and off for anything else; true.
    bool SetOverprintFlag(OVERPRINT_FLAG flag) noexcept;
    /// Stored values above 0 count as on; OVERPRINT_NONE for kind 1.
    OVERPRINT_FLAG GetOverprintFlag() const noexcept;
    bool SetScreenSpecs(const CLR_SCREENSPEC& screen) noexcept;
    bool SetLinePatternPreset(const CLinePatternPreset& preset);
    /// 0: no arrowhead; otherwise a copy of the list's arrowhead number `index`, from 1. False, nothing
    /// changed, for one that the list does not have. Main thread only, as are the two below.
    bool SetLeftArrowStyle(unsigned index);
    bool SetRightArrowStyle(unsigned index);
    /// The number, from 1, of the first arrowhead of the list that is the same; -1 for null and for others.
    static int GetArrowStyle(HMEM arrow);
    static int GetArrowStyleCount();

    /// The pool's order: the colour name (none first; its first 16 UTF-16 units byte by byte, little-endian,
    /// terminator and zeros after it included), then CGE_OUTLINE::CompareTo. Negative, 0 or positive; +1 for
    /// null. `mode` leaves out the colour's identity block.
    int Compare(const WRefCountOutline* other, bool mode) const noexcept;
    bool IsEquivalentTo(const WRefCountOutline* other, bool mode) const noexcept {
        return Compare(other, mode) == 0;
    }
    /// Entries equal under Compare(…, false) have equal hashes. Reads nothing that Compare does not.
    std::uint64_t GetHash() const noexcept;
    /// Hash of, and equality with, an entry that would be made of the record alone.
    static std::uint64_t HashOfCopy(const CGE_OUTLINE& record) noexcept;
    bool EqualsCopyOf(const CGE_OUTLINE& record) const noexcept {
        return !m_colorName && CGE_OUTLINE::CompareTo(m_record, record, false) == 0;
    }

private:
    struct ColorName;

    bool Copy(const CGE_OUTLINE* record, bool copyColor, bool copyRest, bool duplicateArrows);
    bool SetArrowStyle(HMEM& arrow, unsigned index);
    void WriteVersion12(AbstractFileStream& stream, udi::PtrRemapper& remapper) const;

    std::unique_ptr<ColorName> m_colorName;  // beside the node, where a lookup that asks for it is anyway
    CGE_OUTLINE m_record;
};
