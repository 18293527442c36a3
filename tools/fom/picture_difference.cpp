#include "fom/picture_difference.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#include "fom/picture_pixels.h"

namespace command {
namespace {

unsigned Channel(std::uint32_t pixel, unsigned shift) noexcept {
    return pixel >> shift & 0xffu;
}

/// The largest difference of a channel.
unsigned Distance(std::uint32_t a, std::uint32_t b) noexcept {
    unsigned largest = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const unsigned x = Channel(a, shift), y = Channel(b, shift);
        largest = std::max(largest, x > y ? x - y : y - x);
    }
    return largest;
}

constexpr std::uint32_t kSlight = 0xff2b7bd6;

/// Orange just beyond the tolerance, dark red for the largest difference.
std::uint32_t ColorOf(unsigned distance) noexcept {
    if (distance <= PictureDifference::kTolerance) return kSlight;
    constexpr std::array<unsigned, 3> least{255, 150, 20}, most{140, 0, 0};
    // Small differences count more: most are small.
    const unsigned part = std::min(255u, distance * 3);
    std::uint32_t color = 0xff;
    for (std::size_t i = 0; i < least.size(); ++i)
        color = color << 8 | (least[i] * (255 - part) + most[i] * part) / 255;
    return color;
}

/// A pixel over white, in light gray.
std::uint32_t Faint(std::uint32_t pixel) noexcept {
    const unsigned white = 255 - Channel(pixel, 24);
    const unsigned gray = (Channel(pixel, 16) * 54 + Channel(pixel, 8) * 183 + Channel(pixel, 0) * 19) / 256;
    const unsigned light = 255 - (255 - std::min(255u, gray + white)) / 5;
    return 0xff000000u | light << 16 | light << 8 | light;
}

/// Each number becomes the largest one within its neighbours on both sides.
void Spread(std::span<std::uint8_t> row) {
    std::uint8_t left = 0;
    for (std::size_t x = 0; x < row.size(); ++x) {
        const std::uint8_t own = row[x];
        const std::uint8_t right = x + 1 < row.size() ? row[x + 1] : std::uint8_t{0};
        row[x] = std::max({left, own, right});
        left = own;
    }
}

}  // namespace

PictureDifference ComparePictures(CairoSurface& before, CairoSurface& after) {
    const Pixels a(before), b(after);
    PictureDifference difference;
    difference.pixels = a.Width() * a.Height();
    if (a.Width() != b.Width() || a.Height() != b.Height()) {
        difference.sameSize = false;
        difference.differing = difference.excess = difference.pixels;
        difference.worst = 255;
        return difference;
    }
    for (std::size_t y = 0; y < a.Height(); ++y) {
        const std::span<const std::uint32_t> rowA = a.Row(y), rowB = b.Row(y);
        if (std::memcmp(rowA.data(), rowB.data(), rowA.size_bytes()) == 0) continue;
        for (std::size_t x = 0; x < rowA.size(); ++x) {
            const unsigned distance = Distance(rowA[x], rowB[x]);
            difference.worst = std::max(difference.worst, distance);
            if (distance > 0) ++difference.differing;
            if (distance > PictureDifference::kTolerance) ++difference.excess;
        }
    }
    return difference;
}

SurfacePointer DrawDifference(CairoSurface& before, CairoSurface& after) {
    const Pixels a(before), b(after);
    SurfacePointer picture = MakeImageSurface(static_cast<int>(a.Width()), static_cast<int>(a.Height()));
    const Pixels to(*picture);
    // Distances of three rows, spread sideways: the one above, this one, the one below.
    std::array<std::vector<std::uint8_t>, 3> rows;
    for (std::vector<std::uint8_t>& row : rows)
        row.resize(a.Width());
    const auto measure = [&](std::size_t y) {
        std::vector<std::uint8_t>& row = rows[y % 3];
        std::fill(row.begin(), row.end(), std::uint8_t{0});
        if (y >= a.Height()) return;
        for (std::size_t x = 0; x < row.size(); ++x)
            row[x] = static_cast<std::uint8_t>(Distance(a.Row(y)[x], b.Row(y)[x]));
        Spread(row);
    };
    measure(0);
    for (std::size_t y = 0; y < a.Height(); ++y) {
        measure(y + 1);
        for (std::size_t x = 0; x < a.Width(); ++x) {
            const unsigned distance = std::max({rows[0][x], rows[1][x], rows[2][x]});
            to.Row(y)[x] = distance > 0 ? ColorOf(distance) : Faint(a.Row(y)[x]);
        }
    }
    cairo_surface_mark_dirty(picture.get());
    return picture;
}

}  // namespace command
