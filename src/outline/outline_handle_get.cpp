#include "host/gfx/lazy_record.h"

#include "fom/outline_handle.h"

namespace {

const CGE_OUTLINE& RecordOf(const WOutlineHandle& handle) noexcept {
    const CGE_OUTLINE* record = handle.GetCGEOutline();
    return record ? *record : host::EmptyRecord<CGE_OUTLINE>();
}

}  // namespace

const CGE_OUTLINE* WOutlineHandle::GetCGEOutline() const noexcept {
    const WRefCountOutline* entry = m_entry.Get();
    return entry ? entry->GetCGEOutline() : nullptr;
}

CGE_OUTLINE* WOutlineHandle::GetCGEOutlineCopy() const {
    const WRefCountOutline* entry = m_entry.Get();
    return entry ? entry->GetCGEOutlineCopy() : nullptr;
}

CgeOutlineType WOutlineHandle::GetCGEType() const noexcept {
    return static_cast<CgeOutlineType>(RecordOf(*this).type & 15);
}

unsigned WOutlineHandle::GetWidth() const noexcept {
    return GetCGEType() == OutlineNone ? 0 : static_cast<unsigned>(RecordOf(*this).width);
}

unsigned WOutlineHandle::GetJoinType() const noexcept {
    return RecordOf(*this).join;
}

unsigned WOutlineHandle::GetEndCaps() const noexcept {
    return RecordOf(*this).endCaps;
}

unsigned WOutlineHandle::GetJustification() const noexcept {
    return RecordOf(*this).justification;
}

int WOutlineHandle::GetNibAngle() const noexcept {
    return RecordOf(*this).nibAngle;
}

int WOutlineHandle::GetNibStretch() const noexcept {
    const CGE_OUTLINE* record = GetCGEOutline();
    return record ? record->nibStretch : 0;
}

unsigned WOutlineHandle::GetDotLength() const noexcept {
    return RecordOf(*this).dotLength;
}

int WOutlineHandle::GetMiterLimit() const noexcept {
    return RecordOf(*this).GetMiterLimit();
}

const CLR_COLORSPEC* WOutlineHandle::GetColorspec() const noexcept {
    return GetCGEType() == OutlineNone ? nullptr : &RecordOf(*this).color;
}

CLR_SCREENSPEC WOutlineHandle::GetScreenSpecs() const noexcept {
    return RecordOf(*this).screen;
}

const MATRIX& WOutlineHandle::GetMatrix() const noexcept {
    return RecordOf(*this).matrix;
}

const MATRIX& WOutlineHandle::GetProjectMatrix() const noexcept {
    return RecordOf(*this).GetProjectMatrix();
}

OVERPRINT_FLAG WOutlineHandle::GetOverprintFlag() const noexcept {
    const WRefCountOutline* entry = m_entry.Get();
    return entry ? entry->GetOverprintFlag() : OVERPRINT_NONE;
}
