#include "fom/stroke_sample.h"

#include <algorithm>
#include <cairo.h>
#include <span>

#include "fom/document_units.h"
#include "fom/fountain_ramp.h"
#include "fom/polyline.h"
#include "fom/stroke_painter.h"

namespace command {
namespace {

// In pixels.
constexpr double kThinnest = 1;
constexpr double kThickest = 9;
/// A line may be that thin when its dashes would not show otherwise.
constexpr double kThinnestDashed = 0.7;
constexpr double kLeastRepeat = 5;
constexpr double kMostRepeat = 36;
constexpr double kMostReach = 18;
constexpr double kMargin = 14;

/// Up, down, and a curve.
Polyline SampleLine(double width, double height) {
    const double left = kMargin, right = width - kMargin, top = kMargin, bottom = height - kMargin;
    const double step = (right - left) / 5;
    Polyline line{{{left, bottom}, {left + step, top}, {left + 2 * step, bottom}}, false};
    line.AddCurve({left + 3 * step, top - height / 2}, {right - step, bottom + height / 3},
                  {right, (top + bottom) / 2});
    return line;
}

}  // namespace

double SampleEnlargement(const CGE_OUTLINE& pen) {
    const double width = std::max(1, pen.width) / kUnitsPerPixel;
    double result = std::clamp(1.0, kThinnest / width, kThickest / width);
    const double repeat = DashRepeat(pen) / kUnitsPerPixel;
    if (repeat > 0) result = std::max(result, std::min(kLeastRepeat / repeat, kThickest / width));
    if (repeat * result > kMostRepeat)
        result = std::min(result, std::max(kMostRepeat / repeat, kThinnestDashed / width));
    const double reach = ArrowReach(pen) / kUnitsPerPixel;
    return reach * result > kMostReach ? kMostReach / reach : result;
}

void PaintStrokeSample(CairoContext& target, const CGE_OUTLINE& pen, double width, double height) {
    const ScreenColor color = ToScreen(pen.color);
    const bool isLight = 0.299 * color.r + 0.587 * color.g + 0.114 * color.b > 0.75;
    const double ground = isLight ? 0.42 : 1;
    cairo_save(&target);
    cairo_set_source_rgb(&target, ground, ground, ground);
    cairo_rectangle(&target, 0, 0, width, height);
    cairo_fill(&target);
    const double scale = SampleEnlargement(pen) / kUnitsPerPixel;
    cairo_scale(&target, scale, scale);
    const Polyline line = SampleLine(width, height).Transformed({1 / scale, 0, 0, 1 / scale, 0, 0});
    PaintOutline(target, pen, std::span(&line, 1));
    cairo_restore(&target);
}

}  // namespace command
