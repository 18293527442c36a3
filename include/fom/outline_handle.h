#pragma once

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/geometry/matrix.h"
#include "host/gfx/outline.h"
#include "host/stream/archive_object.h"

#include "fom/outline_defaults.h"
#include "fom/outline_list.h"
#include "fom/pooled_reference.h"

class CLinePatternPreset;

/// How the application holds and edits one outline: WFillHandle for outlines, with the same rules throughout
/// (fom/fill_handle.h). A handle may hold nothing, which reads as no outline.
///
/// The pool argument of the constructors is not owned; null means the active pool, also later. A handle may
/// outlive its pool. Arguments may point into the handle's own outline. What throws bad_alloc leaves the
/// handle as it was. Handles belong to the host's main thread.
class FOM_API WOutlineHandle {
public:
    /// A visible outline as WRefCountOutline makes it, or an empty handle.
    explicit WOutlineHandle(bool visible = false, WRCOutlineList* pool = nullptr);
    /// A copy of the record; null gives no outline. With `duplicateArrows` with arrowheads of its own.
    WOutlineHandle(const CGE_OUTLINE* record, bool duplicateArrows, WRCOutlineList* pool = nullptr);
    /// Takes the entry over, also when it throws; null gives an empty handle. An entry that is pooled already
    /// stays its pool's: the handle shares it, or holds a copy when its own pool is another one.
    explicit WOutlineHandle(WRefCountOutline* entry, WRCOutlineList* pool = nullptr);
    /// A constant entry would pass for `visible`.
    explicit WOutlineHandle(const WRefCountOutline* entry, WRCOutlineList* pool = nullptr) = delete;
    /// Pens, as WRefCountOutline makes them.
    WOutlineHandle(unsigned width, const CLR_COLORSPEC* color, const CLinePatternPreset* pattern,
                   unsigned leftArrow, unsigned rightArrow, WRCOutlineList* pool = nullptr);
    /// A colour value 0x00BBGGRR.
    WOutlineHandle(unsigned width, unsigned long rgb, const CLinePatternPreset* pattern, unsigned leftArrow,
                   unsigned rightArrow, WRCOutlineList* pool = nullptr);
    /// Shares the other's entry and pool.
    WOutlineHandle(const WOutlineHandle& other);
    virtual ~WOutlineHandle();
    WOutlineHandle& operator=(const WOutlineHandle& other);

    // Reading. An empty handle gives what is named, and 0 where nothing is.
    /// The pen kind, the low four bits of the type; 1.
    CgeOutlineType GetCGEType() const noexcept;
    /// 0 for kind 1.
    unsigned GetWidth() const noexcept;
    unsigned GetJoinType() const noexcept;
    unsigned GetEndCaps() const noexcept;
    unsigned GetJustification() const noexcept;
    int GetNibAngle() const noexcept;
    int GetNibStretch() const noexcept;
    unsigned GetDotLength() const noexcept;
    int GetMiterLimit() const noexcept;
    /// Null when empty and for kind 1.
    const CLR_COLORSPEC* GetColorspec() const noexcept;
    /// The default screen.
    CLR_SCREENSPEC GetScreenSpecs() const noexcept;
    /// The identity.
    const MATRIX& GetMatrix() const noexcept;
    const MATRIX& GetProjectMatrix() const noexcept;
    /// On or off; none when empty and for kind 1.
    OVERPRINT_FLAG GetOverprintFlag() const noexcept;
    /// The pooled record itself; null.
    const CGE_OUTLINE* GetCGEOutline() const noexcept;
    /// Freed with DeleteCGEOutlineCopy; null.
    CGE_OUTLINE* GetCGEOutlineCopy() const;
    const WRefCountOutline* GetRefCountOutline() const noexcept { return m_entry.Get(); }

    // Writing. An empty handle starts from no outline. "Nothing" also leaves the pool alone.
    /// Replaces the low four bits of the type. Nothing for the kind that GetCGEType tells.
    void SetCGEType(CgeOutlineType kind);
    /// Makes an outline of kind 1 solid, and gives it a round nib when its stretch is 0. Nothing for the
    /// width that GetWidth tells.
    void SetWidth(unsigned width);
    void SetJoinType(unsigned join);
    void SetEndCaps(unsigned caps);
    void SetJustification(unsigned justification);
    void SetNibAngle(int microDegrees);
    void SetNibStretch(int perCent);
    void SetDotLength(unsigned length);
    void SetMiterLimit(int microDegrees);
    /// Null: nothing.
    void SetColorspec(const CLR_COLORSPEC* color);
    void SetScreenSpecs(const CLR_SCREENSPEC& screen);
    /// 1 on, 2 off; nothing for 0 and for the flag that GetOverprintFlag tells.
    void SetOverprintFlag(OVERPRINT_FLAG flag);
    void SetTransfoMatrix(const MATRIX& matrix);
    void SetProjectMatrix(const MATRIX& matrix);
    void SetPenParams(int nibAngle, unsigned width, int nibStretch);
    /// As WRefCountOutline; false, nothing changed, for an arrowhead that the list does not have.
    bool SetLeftArrowStyle(unsigned index);
    bool SetRightArrowStyle(unsigned index);
    void SetLinePatternPreset(const CLinePatternPreset& preset);
    /// A copy of the record; null gives no outline. Arrowheads are shared.
    void SetCGEOutline(const CGE_OUTLINE* record);
    /// Kind 1, everything else as in a default-constructed record.
    void SetToNoOutline();
    /// A solid hairline with a round nib, without dashes and arrowheads, when the handle is empty or of kind
    /// 1; a handle that strokes is left alone.
    void MakeSolid();
    /// OUTPreAdjustPenWidth and OUTPostAdjustPenWidth. Null: nothing.
    void PreAdjustPenWidth(const MATRIX* m);
    void PostAdjustPenWidth(const MATRIX* m);
    /// Becomes the blend of two outlines (fom/outline_blend.h), either of which may be this one. False,
    /// unchanged, when there is none.
    bool BlendPen(const ColorContext& context, const WOutlineHandle& from, const WOutlineHandle& to,
                  double factor);
    /// Takes over the other's colour with its name, the rest, or both; false for neither. Both: shares the
    /// other's entry and pool. An empty handle counts as no outline, which has no colour to take.
    bool Copy(const WOutlineHandle& other, bool copyColor, bool copyRest);
    /// Replaces the entry pointer without touching counts or pools; see WFillHandle::SetRefCountFill.
    void SetRefCountOutline(WRefCountOutline* entry);
    /// A private entry that the caller owns; the handle is empty afterwards. Without an entry, a new one of
    /// kind 1.
    WRefCountOutline* ExtractRefCountOutline();

    /// Reads an entry and shares the pooled equal of it; a loser waits for the end of the load. Faults show
    /// in the stream's good flag; the handle is left alone then.
    void ReadFrom(AbstractFileStream& stream);

    static CGE_OUTLINE* CreateCGEOutline() { return WRefCountOutline::CreateCGEOutline(); }
    static void DeleteCGEOutlineCopy(CGE_OUTLINE* record) noexcept {
        WRefCountOutline::DeleteCGEOutlineCopy(record);
    }
    static int GetArrowStyle(HMEM arrow) { return WRefCountOutline::GetArrowStyle(arrow); }
    static int GetArrowStyleCount() { return WRefCountOutline::GetArrowStyleCount(); }

private:
    friend void SetPresetPen(WOutlineHandle** handle, int n);

    template <class Change>
    bool Edit(Change&& change);
    bool SetArrowStyle(bool (WRefCountOutline::*set)(unsigned), unsigned index);

    VyrFOM::PooledReference<WRefCountOutline, WRCOutlineList> m_entry;
};
