#include "fom/outline_defaults.h"

#include "host/services/calls.h"

#include "fom/outline_record.h"

void OUTGetDefaultOutline(CGE_OUTLINE* outline, int rgbBlack) {
    if (!outline) return;
    const bool roundCaps = GetHostSwitch(L"OutlineEndCapDefaultRound");
    const bool roundJoins = GetHostSwitch(L"OutlineJoinDefaultRound");
    outline->SetToNoOutline();
    outline->type = OutlineSolid;
    outline->endCaps = roundCaps ? 1 : 0;
    outline->join = roundJoins ? 1 : 0;
    outline->width = OUTGetDefaultPatternWidth();
    outline->justification = 0;
    outline->nibStretch = CGE_OUTLINE::kRoundNib;
    if (rgbBlack != 0)
        outline->color.MakeRGBBlack();
    else
        outline->color.MakeCMYKBlack();
    outline->screen.Init();
    outline->matrix = VyrMath::IdentityMatrix;
}

void OUTGetDefaultTextOutline(CGE_OUTLINE* outline, int rgbBlack) {
    if (!outline) return;
    OUTGetDefaultOutline(outline, rgbBlack);
    outline->type = OutlineNone;
}

void OUTSetDefaultOutline(CGE_OUTLINE* outline) {
    OUTGetDefaultOutline(outline, 0);
}
