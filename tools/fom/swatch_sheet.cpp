#include "fom/swatch_sheet.h"

#include <algorithm>
#include <cairo.h>
#include <string>

#include "fom/fill_painter.h"
#include "fom/grouped.h"
#include "fom/sheet_text.h"
#include "fom/stroke_sample.h"
#include "fom/surface_png.h"
#include "fom/swatch_fit.h"
#include "fom/swatch_label.h"
#include "fom/swatch_list.h"

namespace command {
namespace {

// In pixels.
constexpr double kMargin = 36;
constexpr double kSwatchWidth = 112;
constexpr double kSwatchHeight = 72;
constexpr double kCellWidth = 128;
constexpr double kCellHeight = 126;
constexpr double kTitleHeight = 74;
constexpr double kHeadingHeight = 40;
constexpr double kGroupGap = 14;
constexpr double kChecker = 8;
constexpr std::size_t kUsualColumns = 16;
/// The drawing library's largest surface.
constexpr double kMostPixels = 32767;
constexpr double kMostArea = 256e6;

struct Layout {
    std::size_t columns = 0;
    double width = 0;
    double height = 0;
};

Layout LayOut(const SwatchList& list, std::size_t columns) {
    std::size_t widest = 0;
    for (const SwatchGroup& group : list.groups)
        widest = std::max(widest, group.swatches.size());
    constexpr std::size_t forTitle = 5;
    Layout layout;
    layout.columns = columns != 0 ? columns : std::clamp(widest, forTitle, kUsualColumns);
    layout.width = 2 * kMargin + double(layout.columns) * kCellWidth - (kCellWidth - kSwatchWidth);
    layout.height = 2 * kMargin + kTitleHeight;
    for (const SwatchGroup& group : list.groups) {
        const std::size_t rows = (group.swatches.size() + layout.columns - 1) / layout.columns;
        layout.height += kHeadingHeight + double(rows) * kCellHeight + kGroupGap;
    }
    return layout;
}

SwatchLabel MakeLabel(const Swatch& swatch) {
    if (swatch.fill) return LabelOf(*swatch.fill->GetCGEFill());
    const CGE_OUTLINE& pen = *swatch.outline->GetCGEOutline();
    return LabelOf(pen, SampleEnlargement(pen));
}

std::string Counted(std::size_t count, const char* thing) {
    return Grouped(count) + ' ' + thing + (count == 1 ? "" : "s");
}

class Artist {
public:
    Artist(CairoContext& target, const Layout& layout)
        : m_target(&target), m_text(target), m_layout(layout) {}

    void Draw(const SwatchList& list, const PaintDocument& document, const SheetOptions& options,
              const SheetProgress& progress) {
        cairo_set_source_rgb(m_target, 1, 1, 1);
        cairo_paint(m_target);
        DrawTitle(list, document, options);
        double y = kMargin + kTitleHeight;
        std::size_t done = 0;
        for (const SwatchGroup& group : list.groups) {
            y = DrawHeading(group, y);
            for (std::size_t i = 0; i < group.swatches.size(); ++i) {
                if (progress) progress(done++, list.shown);
                const std::size_t column = i % m_layout.columns;
                const std::size_t row = i / m_layout.columns;
                DrawSwatch(group.swatches[i], kMargin + double(column) * kCellWidth,
                           y + double(row) * kCellHeight);
            }
            const std::size_t rows = (group.swatches.size() + m_layout.columns - 1) / m_layout.columns;
            y += double(rows) * kCellHeight + kGroupGap;
        }
    }

private:
    void DrawTitle(const SwatchList& list, const PaintDocument& document, const SheetOptions& options) {
        const double width = m_layout.width - 2 * kMargin;
        const std::size_t shapes = document.ShapeCount();
        std::string title = Counted(list.fills, "fill");
        if (list.outlines > 0) title += ", " + Counted(list.outlines, "outline");
        m_text.Write(title, {kMargin, kMargin + 22, 26, width}, Ink::Strong, true);
        std::string totals = Counted(shapes, "shape") + " in " + Counted(options.drawings, "drawing");
        const std::size_t all = list.fills + list.outlines;
        if (list.shown < all)
            totals += "; " + Grouped(list.shown) + " of the most used are shown, " +
                      Grouped(all - list.shown) + " are left out";
        m_text.Write(totals, {kMargin, kMargin + 46, 14, width}, Ink::Plain);
    }

    double DrawHeading(const SwatchGroup& group, double y) {
        const double width = m_layout.width - 2 * kMargin;
        std::string counts = Counted(group.total, group.isOutlines ? "outline" : "fill");
        if (group.swatches.size() < group.total) counts += ", " + Grouped(group.swatches.size()) + " shown";
        m_text.Write(group.kind, {kMargin, y + 16, 16, width}, Ink::Strong, true);
        const double after = m_text.WidthOf(group.kind) + 10;
        m_text.Write(counts, {kMargin + after, y + 16, 12, width - after}, Ink::Faint);
        cairo_set_source_rgb(m_target, 0.86, 0.86, 0.86);
        cairo_rectangle(m_target, kMargin, y + 25, width, 1);
        cairo_fill(m_target);
        return y + kHeadingHeight;
    }

    void DrawSwatch(const Swatch& swatch, double x, double y) {
        std::string_view missing;
        cairo_save(m_target);
        cairo_rectangle(m_target, x, y, kSwatchWidth, kSwatchHeight);
        cairo_clip(m_target);
        cairo_translate(m_target, x, y);
        if (swatch.fill) {
            missing = DrawFill(*swatch.fill->GetCGEFill());
        } else {
            PaintStrokeSample(*m_target, *swatch.outline->GetCGEOutline(), kSwatchWidth, kSwatchHeight);
        }
        cairo_restore(m_target);
        DrawFrame(x, y);
        SwatchLabel label = MakeLabel(swatch);
        if (!missing.empty()) label.detail = missing;
        double line = y + kSwatchHeight + 14;
        m_text.Write(label.name, {x, line, 11, kSwatchWidth}, Ink::Strong);
        if (!label.detail.empty()) m_text.Write(label.detail, {x, line += 13, 9.5, kSwatchWidth}, Ink::Plain);
        m_text.Write("\u00d7 " + Grouped(swatch.uses), {x, line + 13, 10, kSwatchWidth}, Ink::Faint);
    }

    /// Answers what is missing, as PaintFill does.
    std::string_view DrawFill(const CGE_FILL& fill) {
        if (fill.GetType() == FillNone) {
            DrawNone();
            return {};
        }
        if (fill.GetType() != FillUniform) DrawCheckers();
        const ObjectBounds box = FitSwatch(fill, kSwatchWidth, kSwatchHeight);
        cairo_scale(m_target, kSwatchWidth / (box.right - box.left), kSwatchHeight / (box.bottom - box.top));
        cairo_translate(m_target, -box.left, -box.top);
        return PaintFill(*m_target, fill, box);
    }

    void DrawNone() {
        cairo_set_source_rgb(m_target, 0.85, 0.1, 0.1);
        cairo_set_line_width(m_target, 2);
        cairo_move_to(m_target, 0, kSwatchHeight);
        cairo_line_to(m_target, kSwatchWidth, 0);
        cairo_stroke(m_target);
    }

    /// Shows through what is not opaque.
    void DrawCheckers() {
        cairo_set_source_rgb(m_target, 0.84, 0.84, 0.84);
        constexpr int columns = static_cast<int>(kSwatchWidth / kChecker) + 1;
        constexpr int rows = static_cast<int>(kSwatchHeight / kChecker) + 1;
        for (int row = 0; row < rows; ++row)
            for (int column = row % 2; column < columns; column += 2)
                cairo_rectangle(m_target, column * kChecker, row * kChecker, kChecker, kChecker);
        cairo_fill(m_target);
    }

    void DrawFrame(double x, double y) {
        cairo_set_source_rgba(m_target, 0, 0, 0, 0.25);
        cairo_set_line_width(m_target, 1);
        cairo_rectangle(m_target, x + 0.5, y + 0.5, kSwatchWidth - 1, kSwatchHeight - 1);
        cairo_stroke(m_target);
    }

    CairoContext* m_target;
    SheetText m_text;
    const Layout m_layout;
};

}  // namespace

std::optional<std::vector<std::byte>> DrawSwatches(const PaintDocument& document, const SheetOptions& options,
                                                   const SheetProgress& progress, host::Error& error) {
    const SwatchList list = ListSwatches(document, options.limit);
    const Layout layout = LayOut(list, options.columns);
    if (list.shown == 0) {
        error.reason = "there are no fills to draw";
        return std::nullopt;
    }
    if (layout.width > kMostPixels || layout.height > kMostPixels ||
        layout.width * layout.height > kMostArea) {
        error.reason = "the sheet would be too large: lower --limit, or change --columns";
        return std::nullopt;
    }
    const SurfacePointer surface =
        MakeImageSurface(static_cast<int>(layout.width), static_cast<int>(layout.height));
    const ContextPointer context = MakeContext(*surface);
    Artist(*context, layout).Draw(list, document, options, progress);
    std::optional<std::vector<std::byte>> png = EncodePng(*surface);
    if (!png) error.reason = "the sheet cannot be encoded";
    return png;
}

}  // namespace command
