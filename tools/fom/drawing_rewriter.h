#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "host/base/error.h"

#include "fom/paint_document.h"

#include "svg/omissions.h"

namespace command {

/// A drawing with the paints of a document.
struct RewrittenDrawing {
    std::string text;
    /// Shapes whose paints now come from the document alone.
    std::size_t painted = 0;
    /// Why others keep paints of the drawing, and what SVG cannot say of records, by name.
    svg::Omissions reasons;
};

/// Reads the drawing in `file` and gives each of its shapes the fill and the outline that the document has
/// for it: the shapes from `first` on belong to `drawing`. Geometry, structure, opacity and everything that
/// is no paint stay byte for byte; but what "use" draws several times with different paints is copied beside
/// itself, and each "use" is led to what has its paints. Empty, with `error` filled, when the file cannot be
/// read or is not the one that the document was made of. Throws bad_alloc. Main thread only.
std::optional<RewrittenDrawing> RewriteDrawing(const std::filesystem::path& file,
                                               const PaintDocument& document, const SourceDrawing& drawing,
                                               std::size_t first, host::Error& error);

}  // namespace command
