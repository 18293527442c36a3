#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <numbers>
#include <vector>

#include "fom/fill_painter_parts.h"
#include "fom/fountain_ramp.h"

namespace command {
namespace {

constexpr double kMostLines = 5000;
constexpr double kRadiansPerMicroDegree = std::numbers::pi / 180e6;

/// Dashes in document units; none for a solid pen.
std::vector<double> DashesOf(const CGE_OUTLINE& pen) {
    std::vector<double> dashes;
    if ((pen.type & OutlineDotDash) == 0) return dashes;
    const std::size_t count = std::min<std::size_t>(pen.dotDash.count, pen.dotDash.element.size());
    for (std::size_t i = 0; i < count; ++i)
        dashes.push_back(std::max(0.0, double(pen.dotDash.element[i]) * pen.dotLength));
    if (std::all_of(dashes.begin(), dashes.end(), [](double dash) { return dash == 0; })) dashes.clear();
    return dashes;
}

cairo_line_cap_t CapOf(const CGE_OUTLINE& pen) noexcept {
    if (pen.endCaps == 1) return CAIRO_LINE_CAP_ROUND;
    return pen.endCaps == 2 ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_BUTT;
}

void SetPen(CairoContext& target, const CGE_OUTLINE& pen) {
    const ScreenColor color = ToScreen(pen.color);
    cairo_set_source_rgb(&target, color.r, color.g, color.b);
    double across = 1, down = 0;
    cairo_device_to_user_distance(&target, &across, &down);
    const double hairline = std::hypot(across, down);
    cairo_set_line_width(&target, std::max<double>(pen.width, hairline));
    cairo_set_line_cap(&target, CapOf(pen));
}

/// In coordinates along and across the lines, line k runs at k times the spacing and its dashes start at k
/// times the offset (docs/hatch_lines.md).
void PaintLines(CairoContext& target, const CGE_HATCHLINE& line, const ObjectBounds& object) {
    if ((line.pen.type & OutlineNone) != 0 || line.spacing == 0) return;
    cairo_save(&target);
    SetPen(target, line.pen);
    const std::vector<double> dashes = DashesOf(line.pen);
    const double turn = line.angle * kRadiansPerMicroDegree;
    cairo_translate(&target, line.origin.x, line.origin.y);
    cairo_rotate(&target, turn);
    const double dx = (object.left + object.right) / 2 - line.origin.x;
    const double dy = (object.top + object.bottom) / 2 - line.origin.y;
    const double along = dx * std::cos(turn) + dy * std::sin(turn);
    const double across = dy * std::cos(turn) - dx * std::sin(turn);
    const double reach = std::hypot(object.right - object.left, object.bottom - object.top) / 2;
    const double spacing = std::abs(double(line.spacing));
    const double side = line.spacing < 0 ? -1 : 1;
    const double first = std::ceil((across - reach) / spacing);
    const int count = static_cast<int>(std::min(kMostLines, 2 * reach / spacing + 1));
    for (int i = 0; i < count; ++i) {
        const double k = first + i;
        const double start = along - reach;
        cairo_set_dash(&target, dashes.data(), static_cast<int>(dashes.size()),
                       start - side * k * line.offset);
        cairo_move_to(&target, start, k * spacing);
        cairo_line_to(&target, along + reach, k * spacing);
        cairo_stroke(&target);
    }
    cairo_restore(&target);
}

}  // namespace

void PaintHatch(CairoContext& target, const CGE_HATCHFILL& hatch, const ObjectBounds& object) {
    if (!hatch.background.IsInvalid()) {
        const ScreenColor color = ToScreen(hatch.background);
        cairo_set_source_rgb(&target, color.r, color.g, color.b);
        cairo_paint(&target);
    }
    for (const CGE_HATCHLINE& line : hatch.lines)
        PaintLines(target, line, object);
}

}  // namespace command
