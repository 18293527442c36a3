#include "fom/fill_painter.h"

#include <cairo.h>

#include "fom/fill_painter_parts.h"
#include "fom/fountain_ramp.h"

namespace command {
namespace {

void PaintColor(CairoContext& target, const CLR_COLORSPEC& color) {
    const ScreenColor screen = ToScreen(color);
    cairo_set_source_rgb(&target, screen.r, screen.g, screen.b);
    cairo_paint(&target);
}

/// Its program is the printer's: a neutral gray stands for it.
void PaintPostScript(CairoContext& target) {
    cairo_set_source_rgb(&target, 0.75, 0.75, 0.75);
    cairo_paint(&target);
}

}  // namespace

std::string_view PaintFill(CairoContext& target, const CGE_FILL& fill, const ObjectBounds& object) {
    std::string_view missing;
    cairo_save(&target);
    switch (fill.GetType()) {
        case FillNone:
            break;
        case FillUniform:
            PaintColor(target, fill.Uniform().color);
            break;
        case FillFountain:
            PaintFountain(target, fill.Fountain(), object);
            break;
        case FillPostScript:
            PaintPostScript(target);
            break;
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            PaintMonoBitmap(target, fill.MonoBitmap(), object);
            break;
        case FillColorBitmap:
            PaintColorBitmap(target, fill.ColorBitmap(), object);
            break;
        case FillVector:
            missing = PaintVector(target, fill.Vector(), object);
            break;
        case FillTexture:
            PaintTexture(target, fill.Texture(), object);
            break;
        case FillHatch:
            PaintHatch(target, fill.Hatch(), object);
            break;
    }
    cairo_restore(&target);
    return missing;
}

}  // namespace command
