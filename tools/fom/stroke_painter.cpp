#include "fom/stroke_painter.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <optional>
#include <vector>

#include "fom/arrow_shape.h"
#include "fom/fountain_ramp.h"

namespace command {
namespace {

constexpr double kRadiansPerMicroDegree = std::numbers::pi / 180e6;
constexpr double kMostMiter = 1e4;
constexpr double kThousandths = 1000;
constexpr double kSpeckPixels = 0.05;

int PenKind(const CGE_OUTLINE& pen) noexcept {
    return pen.type & 15;
}

/// A length that is drawn as a line, though hardly seen.
double SpeckOf(CairoContext& target) noexcept {
    double x = kSpeckPixels, y = 0;
    cairo_device_to_user_distance(&target, &x, &y);
    return std::hypot(x, y);
}

/// In document units; none for an unbroken line.
std::vector<double> DashesOf(const CGE_OUTLINE& pen) {
    std::vector<double> dashes;
    if (DashRepeat(pen) <= 0) return dashes;
    for (std::size_t i = 0; i < pen.dotDash.Used(); ++i)
        dashes.push_back(std::max(0.0, double(pen.dotDash.element[i]) * pen.dotLength));
    return dashes;
}

void SetEnds(CairoContext& target, const CGE_OUTLINE& pen) {
    cairo_set_line_cap(&target, pen.endCaps == 1   ? CAIRO_LINE_CAP_ROUND
                                : pen.endCaps == 2 ? CAIRO_LINE_CAP_SQUARE
                                                   : CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(&target, pen.join == 1   ? CAIRO_LINE_JOIN_ROUND
                                 : pen.join == 2 ? CAIRO_LINE_JOIN_BEVEL
                                                 : CAIRO_LINE_JOIN_MITER);
    const double sine = std::sin(pen.GetMiterLimit() * kRadiansPerMicroDegree / 2);
    cairo_set_miter_limit(&target, sine > 1 / kMostMiter ? 1 / sine : kMostMiter);
}

void ApplyNib(CairoContext& target, const CGE_OUTLINE& pen) {
    cairo_rotate(&target, pen.nibAngle * kRadiansPerMicroDegree);
    cairo_scale(&target, std::max(1, std::abs(int{pen.nibStretch})) / 100.0, 1);
}

void Trace(CairoContext& target, const Polyline& line) {
    for (const VECTOR2D& point : line.points)
        cairo_line_to(&target, point.x, point.y);
    if (line.closed) cairo_close_path(&target);
    cairo_new_sub_path(&target);
}

/// The nib is a circle in a space of its own, which the path, already traced, has no part in.
void StrokeTraced(CairoContext& target, const CGE_OUTLINE& pen) {
    cairo_save(&target);
    ApplyNib(target, pen);
    cairo_set_line_width(&target, pen.width);
    cairo_stroke(&target);
    cairo_restore(&target);
}

void TraceSteps(CairoContext& target, std::span<const CGE_ARROWSTEP> steps, const MATRIX& m) {
    const auto at = [&m](const POINT& p) { return TransformPoint(m, {double(p.x), double(p.y)}); };
    for (const CGE_ARROWSTEP& step : steps) {
        const VECTOR2D to = at(step.to), first = at(step.control1), second = at(step.control2);
        if (step.kind == kArrowMove) cairo_move_to(&target, to.x, to.y);
        if (step.kind == kArrowLine) cairo_line_to(&target, to.x, to.y);
        if (step.kind == kArrowCurve)
            cairo_curve_to(&target, first.x, first.y, second.x, second.y, to.x, to.y);
        if (step.kind == kArrowClose) cairo_close_path(&target);
    }
}

/// `end` is where the line ends; it came from `before`.
void PaintArrow(CairoContext& target, const Arrow& arrow, VECTOR2D before, VECTOR2D end, double width) {
    const double length = std::hypot(end.x - before.x, end.y - before.y);
    if (length == 0) return;
    const double scale = width / kThousandths;
    const double dx = (end.x - before.x) / length * scale, dy = (end.y - before.y) / length * scale;
    const MATRIX m = MATRIX{dx, dy, dy, -dx, end.x, end.y} * PlaceArrow(arrow.place);
    cairo_set_fill_rule(&target, CAIRO_FILL_RULE_EVEN_ODD);
    ForEachSubPath(arrow.head, [&](auto steps, bool closed) {
        if (closed) TraceSteps(target, steps, m);
    });
    cairo_fill(&target);
    cairo_set_line_width(&target, width);
    cairo_set_line_cap(&target, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(&target, CAIRO_LINE_JOIN_ROUND);
    ForEachSubPath(arrow.head, [&](auto steps, bool closed) {
        if (!closed) TraceSteps(target, steps, m);
    });
    cairo_stroke(&target);
}

/// How much of a line its arrowhead leaves out; negative where the line is drawn beyond its end.
double CutBack(const std::optional<Arrow>& arrow, double width) noexcept {
    return arrow ? -arrow->head.lineEnd * width / kThousandths : 0;
}

}  // namespace

double DashRepeat(const CGE_OUTLINE& pen) noexcept {
    if (PenKind(pen) != OutlineDotDash) return 0;
    double dots = 0;
    for (std::size_t i = 0; i < pen.dotDash.Used(); ++i)
        dots += std::max(0, pen.dotDash.element[i]);
    return dots * pen.dotLength;
}

double ArrowReach(const CGE_OUTLINE& pen) {
    double reach = 0;
    const auto look = [&](HMEM block, const CGE_ARROWATTRIB& place) {
        const std::optional<Arrow> arrow = ReadArrow(block, place);
        if (!arrow) return;
        const MATRIX m = PlaceArrow(place);
        for (const CGE_ARROWSTEP& step : arrow->head.steps) {
            const VECTOR2D to = TransformPoint(m, {double(step.to.x), double(step.to.y)});
            reach = std::max({reach, std::abs(to.x), std::abs(to.y)});
        }
    };
    look(pen.leftArrow, pen.GetLeftArrowAttributes());
    look(pen.rightArrow, pen.GetRightArrowAttributes());
    return reach * pen.width / kThousandths;
}

void TraceNib(CairoContext& target, const CGE_OUTLINE& pen) {
    cairo_save(&target);
    ApplyNib(target, pen);
    cairo_new_sub_path(&target);
    cairo_arc(&target, 0, 0, pen.width / 2.0, 0, 2 * std::numbers::pi);
    cairo_close_path(&target);
    cairo_restore(&target);
}

void PaintOutline(CairoContext& target, const CGE_OUTLINE& pen, std::span<const Polyline> lines) {
    if (PenKind(pen) == OutlineNone || pen.width <= 0) return;
    cairo_save(&target);
    const ScreenColor color = ToScreen(pen.color);
    cairo_set_source_rgb(&target, color.r, color.g, color.b);
    SetEnds(target, pen);
    cairo_new_path(&target);
    const std::vector<double> dashes = DashesOf(pen);
    const std::optional<Arrow> left = ReadArrow(pen.leftArrow, pen.GetLeftArrowAttributes());
    const std::optional<Arrow> right = ReadArrow(pen.rightArrow, pen.GetRightArrowAttributes());
    for (const Polyline& line : lines) {
        const bool cut = !line.closed && (left || right);
        const Polyline& drawn =
            cut ? Cut(line, CutBack(left, pen.width), line.Length() - CutBack(right, pen.width)) : line;
        if (dashes.empty()) {
            Trace(target, drawn);
        } else {
            for (const Polyline& dash : CutIntoDashes(drawn, dashes, SpeckOf(target)))
                Trace(target, dash);
        }
    }
    StrokeTraced(target, pen);
    for (const Polyline& line : lines) {
        if (line.closed || line.points.size() < 2) continue;
        const std::vector<VECTOR2D>& p = line.points;
        if (left) PaintArrow(target, *left, p[1], p[0], pen.width);
        if (right) PaintArrow(target, *right, p[p.size() - 2], p.back(), pen.width);
    }
    cairo_restore(&target);
}

}  // namespace command
