#pragma once

#include <cstddef>
#include <vector>

#include "fom/fill_document.h"

namespace command {

/// One distinct fill and the shapes that it paints.
struct Swatch {
    const WRefCountFill* fill = nullptr;
    std::size_t uses = 0;
};

/// The swatches of one kind of fill.
struct SwatchGroup {
    CgeFillType kind = FillNone;
    std::size_t fills = 0;  ///< of the kind, also those that are left out
    std::vector<Swatch> swatches;
};

struct SwatchList {
    std::vector<SwatchGroup> groups;
    std::size_t fills = 0;
    std::size_t shown = 0;
};

/// The document's fills by kind, at most `limit` in all: the most used ones, where half of the places are
/// dealt out to all kinds alike, so that none is crowded out. Grays come before colours; these go by hue,
/// then from dark to light. Fills without a colour keep the pool's order. The document does not change while
/// the list is used.
SwatchList ListSwatches(const FillDocument& document, std::size_t limit);

}  // namespace command
