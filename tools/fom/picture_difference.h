#pragma once

#include <cstddef>

#include "fom/cairo_pointers.h"

namespace command {

/// How two pictures differ, pixel by pixel and channel by channel: red, green and blue, multiplied by the
/// opacity as over a transparent ground, and the opacity itself, each 0 to 255.
struct PictureDifference {
    /// Channels that differ by no more count as equal enough ...
    static constexpr unsigned kTolerance = 2;
    /// ... and so does a picture in which this one pixel of so many differs by more.
    static constexpr std::size_t kPixelsPerExcess = 1000;

    bool sameSize = true;
    std::size_t pixels = 0;     ///< of either picture; of the first one when the sizes differ
    std::size_t differing = 0;  ///< pixels with any difference
    std::size_t excess = 0;     ///< pixels with a channel beyond the tolerance
    unsigned worst = 0;         ///< largest difference of a channel

    bool IsIdentical() const noexcept { return differing == 0; }
    bool IsWithin() const noexcept { return sameSize && excess <= pixels / kPixelsPerExcess; }
};

/// Both are 32-bit pixels with opacity. Pictures of different sizes differ everywhere.
PictureDifference ComparePictures(CairoSurface& before, CairoSurface& after);

/// A picture that shows where and how much two of the same size differ: the first one, faint, below pixels
/// that differ, in blue within the tolerance and from orange to dark red beyond it, with an edge of one
/// pixel, so that single ones are seen. Throws bad_alloc.
SurfacePointer DrawDifference(CairoSurface& before, CairoSurface& after);

}  // namespace command
