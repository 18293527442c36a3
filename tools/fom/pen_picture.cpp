#include "fom/pen_picture.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

#include "fom/document_units.h"
#include "fom/fill_painter.h"
#include "fom/pen_text.h"
#include "fom/sheet_text.h"
#include "fom/stroke_painter.h"
#include "fom/surface_png.h"

namespace command {
namespace {

// In pixels.
constexpr double kMargin = 32;
constexpr double kPanelWidth = 440;
constexpr double kNibHeight = 220;
constexpr double kLinesHeight = 300;
constexpr double kGap = 28;
constexpr double kPanelMargin = 22;
constexpr double kTop = kMargin + 52;
constexpr double kWidth = 2 * kMargin + 2 * kPanelWidth + kGap;
constexpr double kHeight = kTop + 2 * 50 + kNibHeight + kLinesHeight + 2 * kMargin;

/// Pixels in a document unit; what would need others is not drawn.
constexpr double kLeastScale = 1e-10;
constexpr double kMostScale = 10;
/// What would be smaller, in pixels, is not drawn either.
constexpr double kLeastSize = 1;
/// A transformation whose two stretches differ by more is no picture.
constexpr double kFlat = 1e-12;
/// Nor is one that enlarges or reduces by more.
constexpr double kMostEnlargement = 1e9;

constexpr int kRightAngles = 4;
/// How far the controls of a quarter circle stand from its ends.
constexpr double kQuarter = 0.5522847498307936;

Polyline Circle(double x, double y, double r) {
    Polyline line{{{x + r, y}}, true};
    double cosine = 1, sine = 0;
    for (int i = 0; i < kRightAngles; ++i) {
        const VECTOR2D from{cosine, sine}, to{-sine, cosine};
        const auto at = [=](VECTOR2D v) { return VECTOR2D{x + r * v.x, y + r * v.y}; };
        line.AddCurve(at({from.x + kQuarter * to.x, from.y + kQuarter * to.y}),
                      at({to.x + kQuarter * from.x, to.y + kQuarter * from.y}), at(to));
        cosine = to.x;
        sine = to.y;
    }
    line.points.pop_back();
    return line;
}

double LongerAxis(const CGE_OUTLINE& pen) noexcept {
    return pen.width * std::max(1.0, pen.nibStretch / 100.0);
}

/// A square, a circle and an open corner, in proportion to the pen.
std::vector<Polyline> SampleLines(const CGE_OUTLINE& pen) {
    const double u = std::max({1.0, LongerAxis(pen), DashRepeat(pen) / 10});
    if (pen.type == OutlineNone || pen.width <= 0) return {};
    return {{{{0, 0}, {9 * u, 0}, {9 * u, 9 * u}, {0, 9 * u}}, true},
            Circle(17 * u, 4.5 * u, 5 * u),
            {{{0, 13 * u}, {11 * u, 16 * u}, {22 * u, 13 * u}}, false}};
}

MATRIX LinearPart(const MATRIX& m) noexcept {
    return {m.a, m.b, m.c, m.d, 0, 0};
}

bool IsPicture(const MATRIX& m) noexcept {
    const double size = std::max({std::abs(m.a), std::abs(m.b), std::abs(m.c), std::abs(m.d)});
    if (!(size > 1 / kMostEnlargement && size < kMostEnlargement)) return false;
    const MATRIX unit{m.a / size, m.b / size, m.c / size, m.d / size, 0, 0};
    return std::abs(Determinant(unit)) > kFlat;
}

ObjectBounds BoundsOf(const std::vector<Polyline>& lines, double reach) {
    ObjectBounds box{0, 0, 0, 0};
    bool isFirst = true;
    for (const Polyline& line : lines) {
        for (const VECTOR2D& p : line.points) {
            if (isFirst) box = {p.x, p.y, p.x, p.y};
            isFirst = false;
            box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
                   std::max(box.bottom, p.y)};
        }
    }
    if (isFirst) return box;
    return {box.left - reach, box.top - reach, box.right + reach, box.bottom + reach};
}

/// The scale at which a box fits into a panel, but no more than kMostScale; 0 for an empty box.
double FitScale(const ObjectBounds& box, const ObjectBounds& panel) noexcept {
    const double width = box.right - box.left, height = box.bottom - box.top;
    if (!(width > 0 || height > 0)) return 0;
    return std::min({(panel.right - panel.left - 2 * kPanelMargin) / width,
                     (panel.bottom - panel.top - 2 * kPanelMargin) / height, kMostScale});
}

/// What is drawn in a panel, in document units.
using Draw = std::function<void(CairoContext&)>;

class Artist {
public:
    explicit Artist(CairoContext& target) : m_target(&target), m_text(target) {}

    void DrawAll(const PenFit& fit) {
        cairo_set_source_rgb(m_target, 1, 1, 1);
        cairo_paint(m_target);
        DrawTitle(fit);
        const double left = kMargin, right = kMargin + kPanelWidth + kGap;
        DrawColumn(fit.before, MATRIX(), fit.before, "before", left);
        DrawColumn(fit.before, LinearPart(fit.under), fit.after, "after", right);
        DrawLegend();
    }

private:
    void DrawTitle(const PenFit& fit) {
        const MATRIX& m = fit.under;
        char text[160];
        std::snprintf(text, sizeof text, "A pen under matrix(%.5g %.5g %.5g %.5g 0 0)", m.a, m.b, m.c, m.d);
        m_text.Write(text, {kMargin, kMargin + 18, 22, kWidth - 2 * kMargin}, Ink::Strong, true);
    }

    /// `old`, mapped by `m`, is what `pen` ought to draw.
    void DrawColumn(const CGE_OUTLINE& old, const MATRIX& m, const CGE_OUTLINE& pen, const char* name,
                    double x) {
        const std::vector<Polyline> lines = SampleLines(old);
        std::vector<Polyline> mapped;
        for (const Polyline& line : lines)
            mapped.push_back(line.Transformed(m));
        const double radius = pen.type == OutlineNone ? 0 : LongerAxis(pen) / 2;
        const std::string label = std::string(name) + ": " + PointsText(pen.width) + ", nib " +
                                  std::to_string(pen.nibStretch) + " % at " + DegreesText(pen.nibAngle);
        DrawPanel(
            {x, kTop, x + kPanelWidth, kTop + kNibHeight}, {-radius, -radius, radius, radius}, m,
            [&old](CairoContext& target) { FillNib(target, old); },
            [&pen](CairoContext& target) { FillNib(target, pen); }, label);
        const double top = kTop + kNibHeight + 50;
        std::string detail;
        if (DashRepeat(pen) > 0) detail = ", dot length " + PointsText(pen.dotLength);
        DrawPanel(
            {x, top, x + kPanelWidth, top + kLinesHeight}, BoundsOf(mapped, LongerAxis(pen) * 1.5), m,
            [&](CairoContext& target) { PaintOutline(target, old, lines); },
            [&](CairoContext& target) { PaintOutline(target, pen, mapped); }, "lines" + detail);
    }

    static void FillNib(CairoContext& target, const CGE_OUTLINE& pen) {
        TraceNib(target, pen);
        cairo_fill(&target);
    }

    /// Fits `box` into the panel. `drawOld` is mapped by `m` and compared with what `draw` draws.
    void DrawPanel(const ObjectBounds& panel, const ObjectBounds& box, const MATRIX& m, const Draw& drawOld,
                   const Draw& draw, const std::string& label) {
        cairo_set_source_rgb(m_target, 0.965, 0.965, 0.965);
        cairo_rectangle(m_target, panel.left, panel.top, panel.right - panel.left, panel.bottom - panel.top);
        cairo_fill(m_target);
        const double scale = FitScale(box, panel);
        const TextPlace place{panel.left, panel.bottom + 20, 14, panel.right - panel.left};
        if (scale == 0) return m_text.Write(label + ": nothing to draw", place, Ink::Strong);
        if (std::max(box.right - box.left, box.bottom - box.top) * scale < kLeastSize)
            return m_text.Write(label + ": too small to draw", place, Ink::Strong);
        if (scale < kLeastScale) return m_text.Write(label + ": too large to draw", place, Ink::Strong);
        m_text.Write(label + ", drawn at " + PercentText(scale * kUnitsPerPixel), place, Ink::Strong);

        cairo_save(m_target);
        cairo_rectangle(m_target, panel.left, panel.top, panel.right - panel.left, panel.bottom - panel.top);
        cairo_clip(m_target);
        cairo_translate(m_target, (panel.left + panel.right) / 2, (panel.top + panel.bottom) / 2);
        cairo_scale(m_target, scale, scale);
        cairo_translate(m_target, -(box.left + box.right) / 2, -(box.top + box.bottom) / 2);
        Compare(m, drawOld, draw);
        cairo_restore(m_target);
    }

    void Compare(const MATRIX& m, const Draw& drawOld, const Draw& draw) {
        PaintMask(draw, 0.95, 0.5, 0.05);
        if (!IsPicture(m)) return;
        cairo_push_group(m_target);
        cairo_save(m_target);
        const cairo_matrix_t map{m.a, m.b, m.c, m.d, 0, 0};
        cairo_transform(m_target, &map);
        PaintMask(drawOld, 0.7, 0.7, 0.7);
        cairo_restore(m_target);
        cairo_push_group(m_target);
        draw(*m_target);
        const PatternPointer drawn(cairo_pop_group(m_target));
        cairo_set_operator(m_target, CAIRO_OPERATOR_ATOP);
        cairo_set_source_rgb(m_target, 0.1, 0.3, 0.55);
        cairo_mask(m_target, drawn.get());
        cairo_set_operator(m_target, CAIRO_OPERATOR_OVER);
        cairo_pop_group_to_source(m_target);
        cairo_paint(m_target);
    }

    /// Draws in one colour, whatever colour `draw` takes.
    void PaintMask(const Draw& draw, double r, double g, double b) {
        cairo_push_group(m_target);
        draw(*m_target);
        const PatternPointer drawn(cairo_pop_group(m_target));
        cairo_set_source_rgb(m_target, r, g, b);
        cairo_mask(m_target, drawn.get());
    }

    void DrawLegend() {
        struct Entry {
            double r, g, b;
            const char* text;
        };
        constexpr Entry entries[] = {{0.1, 0.3, 0.55, "the fitted pen and the transformed drawing agree"},
                                     {0.7, 0.7, 0.7, "only in the transformed drawing"},
                                     {0.95, 0.5, 0.05, "only with the fitted pen"}};
        double x = kMargin;
        const double y = kHeight - kMargin;
        for (const Entry& entry : entries) {
            cairo_set_source_rgb(m_target, entry.r, entry.g, entry.b);
            cairo_rectangle(m_target, x, y - 10, 12, 12);
            cairo_fill(m_target);
            m_text.Write(entry.text, {x + 18, y, 13, kWidth}, Ink::Plain);
            x += 18 + m_text.WidthOf(entry.text) + 28;
        }
    }

    CairoContext* m_target;
    SheetText m_text;
};

}  // namespace

std::optional<std::vector<std::byte>> DrawPenFit(const PenFit& fit, host::Error& error) {
    const SurfacePointer surface =
        MakeImageSurface(static_cast<int>(std::ceil(kWidth)), static_cast<int>(std::ceil(kHeight)));
    const ContextPointer context = MakeContext(*surface);
    Artist(*context).DrawAll(fit);
    std::optional<std::vector<std::byte>> png = EncodePng(*surface);
    if (!png) error.reason = "the picture cannot be encoded";
    return png;
}

}  // namespace command
