#include <cairo.h>
#include <cmath>
#include <cstdio>
#include <librsvg/rsvg.h>
#include <memory>
#include <string>
#include <string_view>

#include "fom/document_units.h"
#include "fom/fill_painter_parts.h"
#include "fom/pattern_content.h"
#include "fom/tame.h"
#include "fom/tile_painter.h"

namespace command {
namespace {

/// Pixels that the steps of filters may go over, all together: seconds for the slowest of them.
constexpr double kMostFilterPixels = 2'000'000;
constexpr std::string_view kNotDrawn = "cannot be drawn";

struct ReleaseObject {
    void operator()(void* object) const noexcept { g_object_unref(object); }
};
using Drawing = std::unique_ptr<RsvgHandle, ReleaseObject>;

/// Art that the renderer cannot draw is no news for the terminal.
GLogWriterOutput WriteNoWarnings(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
    if ((level & G_LOG_LEVEL_WARNING) != 0) return G_LOG_WRITER_HANDLED;
    return g_log_writer_default(level, fields, count, data);
}

/// GLib takes a writer once in a process.
void SilenceRenderer() {
    [[maybe_unused]] static const bool done =
        (g_log_set_writer_func(WriteNoWarnings, nullptr, nullptr), true);
}

/// A drawing that shows the part `box` of the content, whatever its size, in document units.
std::string Wrap(const std::string& content, const RECT& box) {
    char start[256];
    std::snprintf(start, sizeof start,
                  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1000\" height=\"1000\" "
                  "preserveAspectRatio=\"none\" "
                  "viewBox=\"%.6f %.6f %.6f %.6f\">",
                  box.left / kUnitsPerPixel, box.top / kUnitsPerPixel,
                  (double(box.right) - box.left) / kUnitsPerPixel,
                  (double(box.bottom) - box.top) / kUnitsPerPixel);
    return start + content + "</svg>";
}

Drawing Load(const std::string& content, const RECT& box) {
    const std::string text = Wrap(content, box);
    GError* error = nullptr;
    Drawing drawing(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(text.data()), text.size(), &error));
    if (error) g_error_free(error);
    return drawing;
}

}  // namespace

std::string_view PaintVector(CairoContext& target, const CGE_VECTORFILL& vector, const ObjectBounds& object) {
    const RECT& box = vector.originalBoundingBox;
    std::string content = ReadPatternContent(vector.tmpFile);
    if (content.empty() || box.right <= box.left || box.bottom <= box.top) return {};
    const TileLayout layout = LayOutTiles(vector.tiling, vector.boundingBox, object);
    std::string_view missing = Tame(content, kMostFilterPixels / CountTilePixels(target, layout));
    SilenceRenderer();
    const Drawing drawing = Load(content, box);
    if (!drawing) return kNotDrawn;
    PaintTiles(target, layout, [&](CairoContext& tile, double width, double height) {
        const RsvgRectangle place{0, 0, width, height};
        GError* error = nullptr;
        if (!rsvg_handle_render_document(drawing.get(), &tile, &place, &error)) missing = kNotDrawn;
        if (error) g_error_free(error);
    });
    return missing;
}

}  // namespace command
