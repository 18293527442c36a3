#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "host/base/error.h"

#include "fom/paint_document.h"

namespace command {

struct SheetOptions {
    std::size_t limit = 0;     ///< swatches, the most used first
    std::size_t columns = 0;   ///< 0: as many as fit the usual width
    std::size_t drawings = 0;  ///< that the fills come from, for the title
};

/// Told how many swatches of how many are drawn.
using SheetProgress = std::function<void(std::size_t done, std::size_t total)>;

/// Draws the document's distinct fills and outlines as a labelled sheet: the bytes of a PNG file. Each is
/// drawn from its pooled record alone. Empty, with the reason in `error`, when there is nothing to draw or
/// the sheet would be too large.
std::optional<std::vector<std::byte>> DrawSwatches(const PaintDocument& document, const SheetOptions& options,
                                                   const SheetProgress& progress, host::Error& error);

}  // namespace command
