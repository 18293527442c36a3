#include <algorithm>
#include <limits>
#include <utility>

#include "fom/fill_defaults.h"
#include "fom/refcount_fill.h"

namespace {

/// Makes the new record aside: the old one stays when memory runs out.
template <class SetDefaults>
CGE_FILL MakeRecord(CgeFillType kind, SetDefaults setDefaults) {
    CGE_FILL record(kind);
    setDefaults(record);
    return record;
}

// Puts the unit circle or square into the middle of the object's box.
constexpr MATRIX kInscribed{0.5, 0, 0, 0.5, 0.5, 0.5};

bool IsFountainType(ClrFountainFillType type) noexcept {
    return type >= FountainLinear && type <= FountainSquare;
}

std::int16_t ClampSteps(unsigned steps) noexcept {
    return static_cast<std::int16_t>(std::min<unsigned>(steps, std::numeric_limits<std::int16_t>::max()));
}

}  // namespace

void WRefCountFill::CreateDefaultNoFill() {
    InstallRecord(CGE_FILL(FillNone));
}

void WRefCountFill::CreateDefaultSolidFill() {
    InstallRecord(MakeRecord(
        FillUniform, [](CGE_FILL& record) { FILLSetDefaultCGEUniform(&record.EditUniform(), nullptr); }));
}

void WRefCountFill::CreateDefaultGradientFill() {
    InstallRecord(MakeRecord(
        FillFountain, [](CGE_FILL& record) { FILLSetDefaultCGEFountain(&record.EditFountain(), nullptr); }));
}

void WRefCountFill::CreateDefaultMonoBitmapFill() {
    if (GetFillType() == FillMonoBitmap)
        GetCGEFill()->EditMonoBitmap().Clear();
    else
        InstallRecord(CGE_FILL(FillMonoBitmap));
    FILLInternalSetDefaultCGEMonoBitmap(GetCGEFill(), 1);
}

// The colour context is for patterns that bring colours of their own; the default one is empty.
void WRefCountFill::CreateDefaultVectorFill(const ColorContext&) {
    InstallRecord(
        MakeRecord(FillVector, [](CGE_FILL& record) { FILLSetDefaultCGEVector(&record.EditVector()); }));
    OwnPatternData();
}

void WRefCountFill::CreateDefaultColorBitmapFill() {
    InstallRecord(MakeRecord(
        FillColorBitmap, [](CGE_FILL& record) { FILLSetDefaultCGEColorBitmap(&record.EditColorBitmap()); }));
    OwnPatternData();
}

void WRefCountFill::CreateDefaultHatchFill() {
    InstallRecord(
        MakeRecord(FillHatch, [](CGE_FILL& record) { FILLSetDefaultCGEHatch(&record.EditHatch()); }));
}

void WRefCountFill::CreateDefaultTextureFill() {
    InstallRecord(
        MakeRecord(FillTexture, [](CGE_FILL& record) { FILLSetDefaultCGETexture(&record.EditTexture()); }));
    OwnPatternData();
}

void WRefCountFill::CreateDefaultPostscriptFill() {
    InstallRecord(
        MakeRecord(FillPostScript, [](CGE_FILL& record) { FILLGetDefaultPSFill(&record.EditPostScript()); }));
}

void WRefCountFill::CreateSolidFill(const CLR_COLORSPEC* color, const CLR_SCREENSPEC* screen) {
    InstallRecord(MakeRecord(FillUniform, [=](CGE_FILL& record) {
        FILLGetDefaultUniformFill(&record.EditUniform(), 0);
        if (color) record.EditUniform().color = *color;
        if (screen) record.EditUniform().screen = *screen;
    }));
}

bool WRefCountFill::CreateGradientFill(ClrFountainFillType type, const CLR_COLORSPEC* from,
                                       const CLR_COLORSPEC* to, unsigned steps) {
    if (!from || !to || !IsFountainType(type)) return false;
    InstallRecord(MakeRecord(FillFountain, [=](CGE_FILL& record) {
        CGE_FOUNTAINFILL& fountain = record.EditFountain();
        FILLSetDefaultCGEFountain(&fountain, nullptr);
        fountain.SetFountainType(type);
        if (type != FountainLinear) fountain.SetMatrix(kInscribed);
        fountain.SetColor(0, *from);
        fountain.SetColor(1, *to);
        fountain.SetNumSteps(ClampSteps(steps));
    }));
    return true;
}

void WRefCountFill::CreateFillForPatternDlg(CgeFillType kind, const ColorContext& context) {
    switch (kind) {
        case FillUniform:
            return CreateDefaultSolidFill();
        case FillFountain:
            return CreateDefaultGradientFill();
        case FillPostScript:
            return CreateDefaultPostscriptFill();
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return CreateDefaultMonoBitmapFill();
        case FillColorBitmap:
            return CreateDefaultColorBitmapFill();
        case FillVector:
            return CreateDefaultVectorFill(context);
        case FillTexture:
            return CreateDefaultTextureFill();
        case FillHatch:
            return CreateDefaultHatchFill();
        default:
            return CreateDefaultNoFill();
    }
}

bool WRefCountFill::SetOverprintFlag(OVERPRINT_FLAG flag) {
    const std::uint32_t overprint = flag == OVERPRINT_ON ? 1 : 0;
    switch (GetFillType()) {
        case FillUniform:
            GetCGEFill()->EditUniform().screen.overprint = overprint;
            return true;
        case FillFountain: {
            CLR_SCREENSPEC screen = GetCGEFill()->Fountain().GetScreen();
            screen.overprint = overprint;
            GetCGEFill()->EditFountain().SetScreen(screen);
            return true;
        }
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            GetCGEFill()->EditMonoBitmap().screen.overprint = overprint;
            return true;
        case FillHatch:
            GetCGEFill()->EditHatch().screen.overprint = overprint;
            for (CGE_HATCHLINE& line : GetCGEFill()->EditHatch().lines)
                line.pen.overprint = overprint;
            return true;
        default:
            return false;
    }
}

OVERPRINT_FLAG WRefCountFill::GetOverprintFlag() const noexcept {
    const CLR_SCREENSPEC* screen = m_hasRecord ? GetCGEFill()->GetScreen() : nullptr;
    if (!screen) return OVERPRINT_NONE;
    return screen->overprint == 1 ? OVERPRINT_ON : OVERPRINT_OFF;
}
