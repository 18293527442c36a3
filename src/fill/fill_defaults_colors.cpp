#include "fom/fill_defaults.h"
#include "fom/fill_handle.h"

namespace {

enum class FillEnd { Start, End };

/// The colour at one end of the fill; without a model for kinds that have none.
CLR_COLORSPEC FindColor(const CGE_FILL& fill, FillEnd end) noexcept {
    const bool start = end == FillEnd::Start;
    switch (fill.GetType()) {
        case FillUniform:
            return fill.Uniform().color;
        case FillFountain: {
            const CLR_FOUNTCOLOR_ARRAY& stops = fill.Fountain().GetColors();
            if (stops.empty()) return CLR_COLORSPEC();
            return start ? stops.front().color : stops.back().color;
        }
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return start ? fill.MonoBitmap().foreground : fill.MonoBitmap().background;
        case FillHatch:
            return fill.Hatch().background;
        default:
            return CLR_COLORSPEC();
    }
}

CLR_COLORSPEC FindColor(const WFillHandle* from, FillEnd end) {
    const CGE_FILL* fill = from ? from->GetCGEFill() : nullptr;
    CLR_COLORSPEC color = fill ? FindColor(*fill, end) : CLR_COLORSPEC();
    if (color.GetModel() != ClrModel::None) return color;
    if (end == FillEnd::Start)
        color.MakeCMYKBlack();
    else
        color.MakeCMYKWhite();
    return color;
}

}  // namespace

CLR_COLORSPEC FILLGetDefaultStartColorFromFill(const WFillHandle* from) {
    return FindColor(from, FillEnd::Start);
}

CLR_COLORSPEC FILLGetDefaultEndColorFromFill(const WFillHandle* from) {
    return FindColor(from, FillEnd::End);
}
