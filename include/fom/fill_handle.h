#pragma once

#include <memory>

#include "host/base/export.h"
#include "host/geometry/matrix.h"
#include "host/gfx/fill.h"
#include "host/stream/archive_object.h"

#include "fom/fill_list.h"
#include "fom/pooled_reference.h"

/// How the application holds and edits one fill. A handle shares a pooled entry and carries its own tiling
/// matrix. Every change is copy-on-write: the handle registers a changed copy, or changes an entry that it
/// alone holds, so two handles that show the same fill in one pool hold the same entry.
///
/// The pool argument of the constructors is held weakly; a null or expired one means the active pool. A
/// handle may outlive its pool: its entry is gone then, and the handle holds nothing. Entries are given back
/// to the pool that really holds them. Handles belong to the host's main thread.
///
/// Arguments may point into the handle's own fill. What throws bad_alloc leaves the handle as it was. Without
/// any pool (no active one either) nothing can be registered: the handle stays as it is.
class FOM_API WFillHandle : public ArchiveObject {
public:
    /// Black uniform, or no fill.
    explicit WFillHandle(bool solid, std::shared_ptr<WRCFillList> pool = nullptr);
    /// A uniform fill with the default screen; a null colour gives CMYK black.
    explicit WFillHandle(const CLR_COLORSPEC* color, std::shared_ptr<WRCFillList> pool = nullptr);
    /// A colour value 0x00BBGGRR.
    explicit WFillHandle(unsigned long colorref, std::shared_ptr<WRCFillList> pool = nullptr);
    /// Takes the entry over, also when it throws; null gives no fill. An entry that is pooled already stays
    /// its pool's: the handle shares it, or holds a copy when its own pool is another one.
    explicit WFillHandle(WRefCountFill* entry, std::shared_ptr<WRCFillList> pool = nullptr);
    /// A constant entry would pass for `solid`.
    explicit WFillHandle(const WRefCountFill* entry, std::shared_ptr<WRCFillList> pool = nullptr) = delete;
    /// A copy of the record (null: kind 0), with a digest of 16 bytes where one is given.
    explicit WFillHandle(const CGE_FILL* record, std::shared_ptr<WRCFillList> pool = nullptr,
                         const long* digest = nullptr);
    WFillHandle(const WFillHandle& other);
    ~WFillHandle() override;
    WFillHandle& operator=(const WFillHandle& other);
    /// Shares the other's entry, tiling matrix and pool. Itself: nothing.
    void Copy(const WFillHandle& other);

    // Whole fills.
    /// Keeps the screen of a uniform fill; otherwise the default screen. Null: nothing.
    void CreateSolidFill(const CLR_COLORSPEC* color);
    /// False, unchanged, when the gradient cannot be made.
    bool CreateGradientFill(ClrFountainFillType type, const CLR_COLORSPEC* from, const CLR_COLORSPEC* to,
                            unsigned steps);
    /// The kind's defaults; nothing of the old fill is kept. An unknown kind gives kind 0; 8 gives 7.
    void CreateFill(CgeFillType kind, const ColorContext& context);
    void SetToNoFill();
    /// A copy of the record, or kind 0 for null. It may point into the handle's own entry. The digest is kept
    /// when both use the same temporary data (HasSameTempFile).
    void SetCGEFill(const CGE_FILL* record);
    /// Hands the fill over to another pool; returns the old pool (null when it had expired or was never set).
    std::shared_ptr<WRCFillList> MoveToOtherFillList(std::shared_ptr<WRCFillList> pool);
    /// Same entry and equal tiling matrices; false for null.
    bool SameContentsAs(const WFillHandle* other) const noexcept;

    // Attributes. Each returns false, without touching the pool, when nothing would change. A null argument
    // where none is spoken of changes nothing.
    /// Kinds 0 and 1: the fill becomes uniform with the default screen. Any other kind: extracted and
    /// registered again unchanged, false.
    bool SetUniformColorspec(const CLR_COLORSPEC* color);
    bool SetFountainData(const CGE_FOUNTAINFILL* fountain);
    bool SetFountainAngle(int microDegrees);
    bool SetFountainOffset(int x, int y);
    bool SetFountainColorspec(const CLR_COLORSPEC* color, unsigned index);
    bool SetMonochromeColorspec(const CLR_COLORSPEC* color, MONOCHROME_INDEX which);
    /// Kinds 7 to 11. True, without touching the pool, for an equal tiling.
    bool SetCGETiling(const CGE_TILING* tiling);
    /// Kinds 9 to 11: the fill gets a duplicate of the block; null leaves none. False for the current block.
    bool SetVectorData(HMEM block);
    /// Kinds 9 to 11: the fill gets a duplicate of that temporary data, and a new digest. An unknown
    /// identifier leaves the fill without data.
    bool SetTMPFileID(unsigned id);
    bool SetBoundingBox(const RECT* box);
    /// 0, an equal flag and kinds without the field change nothing.
    bool SetOverprintFlag(OVERPRINT_FLAG flag);
    /// Goes through the pool also for an equal value.
    bool SetUserData(unsigned value);
    /// Take over their arguments, as the entry's functions do, also when they change nothing or throw.
    bool SetDigestKey(long* key);
    bool SetColorNameList(WRefCountFill::ColorNameMap* names);
    /// Replaces the entry pointer without touching counts or pools: the caller answers for both. The handle
    /// gives the reference on a pooled entry back to that entry's pool in the end; an entry that is in no
    /// pool stays the caller's, who keeps it until the handle holds something else.
    void SetRefCountFill(WRefCountFill* entry);
    /// The handle's own; no pool takes part.
    void SetTilingMatrix(const MATRIX& matrix) noexcept { m_tilingMatrix = matrix; }

    // Reading; no pool takes part.
    /// The pooled record itself; null without an entry.
    const CGE_FILL* GetCGEFill() const noexcept;
    /// Freed with DeleteCGEFillCopy.
    CGE_FILL* GetCGEFillCopy() const;
    static void DeleteCGEFillCopy(CGE_FILL* record) noexcept;
    static CGE_FILL* CreateCGEFill() noexcept;
    /// 0 without an entry.
    CgeFillType GetCGEType() const noexcept;
    /// Null for other kinds.
    const CLR_COLORSPEC* GetUniformColorspec() const noexcept;
    /// Null for other kinds and for an index beyond the stops.
    const CLR_COLORSPEC* GetFountainColorspec(unsigned index) const noexcept;
    unsigned GetNumFountainColors() const noexcept;
    int GetFountainAngle() const noexcept;
    /// False, nothing written, for other kinds. Either pointer may be null.
    bool GetFountainOffset(int* x, int* y) const noexcept;
    const CGE_TILING* GetCGETiling() const noexcept;
    HMEM GetVectorData() const noexcept;
    unsigned GetTMPFileID() const noexcept;
    const RECT* GetBoundingBox() const noexcept;
    OVERPRINT_FLAG GetOverprintFlag() const noexcept;
    unsigned GetUserData() const noexcept;
    const MATRIX& GetTilingMatrix() const noexcept { return m_tilingMatrix; }
    const WRefCountFill* GetRefCountFill() const noexcept;
    /// The colour that FILLGetDefaultStartColorFromFill starts from, as it is stored. False for kinds without
    /// a colour and for a fountain without stops.
    bool GetPrimaryColor(CLR_COLORSPEC& color) const noexcept;

    /// A private entry that the caller owns; the handle holds nothing afterwards. Without an entry, a new one
    /// of kind 0.
    WRefCountFill* ExtractRefCountFill();

    // Transforms.
    bool GetScaleWithObject() const noexcept;
    bool GetScaleLineWidths() const noexcept;
    /// Follows a transform of the object: the tiling matrix unless the fill scales with the object, and the
    /// hatch lines unless the hatch scales its line widths. `force` does both in any case.
    void ProjectFill(const MATRIX& m, bool force);
    /// Kind 12 only, as VyrFOM's hatch line functions (fom/hatch_lines.h) do; copy-on-write. Lines that stay
    /// as they are do not touch the pool, unless `force` is set. Null: nothing.
    void TransformHatchLines(const MATRIX* m, bool force = false);
    void PreAdjustHatchPenWidths(const MATRIX* m);
    void PostAdjustHatchPenWidths(const MATRIX* m);
    void ClearHatchLineTransfos();

    // Streams. Faults show in the stream's good flag.
    void ReadFrom(AbstractFileStream& stream) override;
    void WriteTo(AbstractFileStream& stream) const override;
    const char* getClassName() const override { return "WFillHandle"; }
    /// Six doubles of 8 bytes, little-endian. A short transfer clears the good flag; the rest is still
    /// attempted. An element that is cut short keeps its value.
    void WriteMat(AbstractFileStream& stream) const noexcept;
    void ReadMat(AbstractFileStream& stream) noexcept;

private:
    const WRefCountFill* Entry() const noexcept { return m_entry.Get(); }
    const CGE_FILL* GetCGEFill(CgeFillType kind) const noexcept;
    const CGE_PATTERNFILL* GetPattern() const noexcept;
    bool HasColorNames(const WRefCountFill::ColorNameMap* names) const noexcept;
    template <class Change>
    void EditHatchLines(bool always, Change&& change);

    VyrFOM::PooledReference<WRefCountFill, WRCFillList> m_entry;
    MATRIX m_tilingMatrix;
};

/// True when both records are of the same pattern kind and name the same temporary data.
FOM_API bool HasSameTempFile(const CGE_FILL& a, const CGE_FILL& b) noexcept;
