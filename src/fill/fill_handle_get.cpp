#include "fom/fill_handle.h"
#include "fom/fill_record.h"

const WRefCountFill* WFillHandle::GetRefCountFill() const noexcept {
    return Entry();
}

const CGE_FILL* WFillHandle::GetCGEFill() const noexcept {
    const WRefCountFill* entry = Entry();
    return entry ? entry->GetCGEFill() : nullptr;
}

const CGE_FILL* WFillHandle::GetCGEFill(CgeFillType kind) const noexcept {
    const CGE_FILL* fill = GetCGEFill();
    return fill && fill->GetType() == kind ? fill : nullptr;
}

CGE_FILL* WFillHandle::GetCGEFillCopy() const {
    const WRefCountFill* entry = Entry();
    return entry ? entry->GetCGEFillCopy() : nullptr;
}

void WFillHandle::DeleteCGEFillCopy(CGE_FILL* record) noexcept {
    RCF_DeleteFill(record);
}

CGE_FILL* WFillHandle::CreateCGEFill() noexcept {
    return RCF_CreateFill(FillNone);
}

CgeFillType WFillHandle::GetCGEType() const noexcept {
    const WRefCountFill* entry = Entry();
    return entry ? entry->GetFillType() : FillNone;
}

const CLR_COLORSPEC* WFillHandle::GetUniformColorspec() const noexcept {
    const CGE_FILL* fill = GetCGEFill(FillUniform);
    return fill ? &fill->Uniform().color : nullptr;
}

const CLR_COLORSPEC* WFillHandle::GetFountainColorspec(unsigned index) const noexcept {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    return fill && index < fill->Fountain().GetNumColors() ? &fill->Fountain().GetColor(index).color
                                                           : nullptr;
}

unsigned WFillHandle::GetNumFountainColors() const noexcept {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    return fill ? fill->Fountain().GetNumColors() : 0u;
}

int WFillHandle::GetFountainAngle() const noexcept {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    return fill ? fill->Fountain().GetAngle() : 0;
}

bool WFillHandle::GetFountainOffset(int* x, int* y) const noexcept {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    if (!fill) return false;
    if (x) *x = fill->Fountain().GetCenterOffsetX();
    if (y) *y = fill->Fountain().GetCenterOffsetY();
    return true;
}

const CGE_TILING* WFillHandle::GetCGETiling() const noexcept {
    const CGE_FILL* fill = GetCGEFill();
    return fill ? fill->GetCGETiling() : nullptr;
}

const CGE_PATTERNFILL* WFillHandle::GetPattern() const noexcept {
    const CGE_FILL* fill = GetCGEFill();
    return fill ? fill->Pattern() : nullptr;
}

HMEM WFillHandle::GetVectorData() const noexcept {
    const CGE_PATTERNFILL* pattern = GetPattern();
    return pattern ? pattern->patternData : nullptr;
}

unsigned WFillHandle::GetTMPFileID() const noexcept {
    const CGE_PATTERNFILL* pattern = GetPattern();
    return pattern ? pattern->tmpFile : 0u;
}

const RECT* WFillHandle::GetBoundingBox() const noexcept {
    const CGE_PATTERNFILL* pattern = GetPattern();
    return pattern ? &pattern->boundingBox : nullptr;
}

OVERPRINT_FLAG WFillHandle::GetOverprintFlag() const noexcept {
    const WRefCountFill* entry = Entry();
    return entry ? entry->GetOverprintFlag() : OVERPRINT_NONE;
}

unsigned WFillHandle::GetUserData() const noexcept {
    const WRefCountFill* entry = Entry();
    return entry ? entry->GetUserData() : 0u;
}

bool WFillHandle::GetPrimaryColor(CLR_COLORSPEC& color) const noexcept {
    const CGE_FILL* fill = GetCGEFill();
    switch (GetCGEType()) {
        case FillUniform:
            color = fill->Uniform().color;
            return true;
        case FillFountain:
            if (fill->Fountain().GetNumColors() == 0) return false;
            color = fill->Fountain().GetColor(0).color;
            return true;
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            color = fill->MonoBitmap().foreground;
            return true;
        case FillHatch:
            color = fill->Hatch().background;
            return true;
        default:
            return false;
    }
}

bool WFillHandle::SameContentsAs(const WFillHandle* other) const noexcept {
    return other && Entry() == other->Entry() && m_tilingMatrix == other->m_tilingMatrix;
}
