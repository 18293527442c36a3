#pragma once

#include <cstddef>
#include <vector>

#include "fom/paint_document.h"

namespace command {

/// One distinct fill or outline and the shapes that it paints.
struct Swatch {
    /// One of the two.
    const WRefCountFill* fill = nullptr;
    const WRefCountOutline* outline = nullptr;
    std::size_t uses = 0;
};

/// The swatches of one kind of fill, or of pen.
struct SwatchGroup {
    const char* kind = "";
    bool isOutlines = false;
    std::size_t total = 0;  ///< of the kind, also those that are left out
    std::vector<Swatch> swatches;
};

struct SwatchList {
    std::vector<SwatchGroup> groups;
    std::size_t fills = 0;
    std::size_t outlines = 0;
    std::size_t shown = 0;
};

/// The document's fills by kind, then its outlines by the kind of their pen; at most `limit` in all: the most
/// used ones, where half of the places are dealt out to all kinds alike, so that none is crowded out. Grays
/// come before colours; these go by hue, then from dark to light; outlines of one colour from thin to thick.
/// What has no colour of its own keeps the pool's order. The document does not change while the list is used.
SwatchList ListSwatches(const PaintDocument& document, std::size_t limit);

}  // namespace command
