#include "fom/fill_defaults.h"

#include <utility>

#include "fom/outline_defaults.h"

namespace {

constexpr std::int32_t kHatchSpacing = 25400;   // a tenth of an inch
constexpr std::int32_t kHatchAngle = 45000000;  // 45 degrees

CLR_FOUNTCOLOR MakeStop(std::uint16_t position, const CLR_COLORSPEC& color) {
    CLR_FOUNTCOLOR stop;
    stop.position = position;
    stop.color = color;
    return stop;
}

/// The defaults of the sub-record of `kind`; false for an unknown kind.
bool SetKindDefaults(CGE_FILL& fill, CgeFillType kind) {
    switch (kind) {
        case FillNone:
            return true;
        case FillUniform:
            FILLSetDefaultCGEUniform(&fill.EditUniform(), nullptr);
            return true;
        case FillFountain:
            FILLSetDefaultCGEFountain(&fill.EditFountain(), nullptr);
            return true;
        case FillPostScript:
            FILLGetDefaultPSFill(&fill.EditPostScript());
            return true;
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            FILLSetDefaultCGEMonoBitmapEx(&fill.EditMonoBitmap(), 1);
            return true;
        case FillColorBitmap:
            FILLSetDefaultCGEColorBitmap(&fill.EditColorBitmap());
            return true;
        case FillVector:
            FILLSetDefaultCGEVector(&fill.EditVector());
            return true;
        case FillTexture:
            FILLSetDefaultCGETexture(&fill.EditTexture());
            return true;
        case FillHatch:
            FILLSetDefaultCGEHatch(&fill.EditHatch());
            return true;
        default:
            return false;
    }
}

}  // namespace

int QELDLGSetDefaultCGEFill(CGE_FILL* fill, CgeFillType kind) {
    if (!fill || !SetKindDefaults(*fill, kind)) return 0;
    fill->SetType(kind == FillMonoBitmapAlt ? FillMonoBitmap : kind);
    return 1;
}

void FILLGetDefaultScreenSpec(CLR_SCREENSPEC* screen) {
    if (screen) screen->Init();
}

void FILLGetDefaultUniformFill(CGE_UNIFORMFILL* uniform, int rgb) {
    if (!uniform) return;
    if (rgb != 0)
        uniform->color.MakeRGBBlack();
    else
        uniform->color.MakeCMYKBlack();
    uniform->screen.Init();
}

void FILLSetDefaultCGEUniform(CGE_UNIFORMFILL* uniform, const WFillHandle* from) {
    if (!uniform) return;
    uniform->color = FILLGetDefaultStartColorFromFill(from);
    uniform->screen.Init();
}

void FILLSetDefaultCGEFountain(CGE_FOUNTAINFILL* fountain, const WFillHandle* from) {
    if (!fountain) return;
    CGE_FOUNTAINFILL fresh;
    fresh.SetColors({MakeStop(0, FILLGetDefaultStartColorFromFill(from)),
                     MakeStop(100, FILLGetDefaultEndColorFromFill(from))});
    fresh.SetBlendRateMethod(BlendRateDefault);
    fresh.SetAnisotropic(true);
    *fountain = std::move(fresh);
}

void FILLGetDefaultPSFill(CGE_PSFILL* postScript) {
    if (postScript) postScript->number = 0;
}

void FILLSetDefaultCGEHatchLine(CGE_HATCHLINE* line) {
    if (!line) return;
    OUTGetDefaultOutline(&line->pen, 0);
    line->origin = POINT();
    line->offset = 0;
    line->spacing = kHatchSpacing;
    line->angle = kHatchAngle;
}

void FILLSetDefaultCGEHatch(CGE_HATCHFILL* hatch) {
    if (!hatch) return;
    CGE_HATCHFILL fresh;
    fresh.background.MakeCMYKWhite();
    fresh.spacingMultiplier = 1.0;
    fresh.thicknessMultiplier = 1.0;
    fresh.SetHatchArraySize(1);
    for (CGE_HATCHLINE& line : fresh.lines)
        FILLSetDefaultCGEHatchLine(&line);
    *hatch = std::move(fresh);
}
