#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "host/base/export.h"
#include "host/base/ref_ptr.h"
#include "host/geometry/rect.h"

namespace host::detail {
class FlatBlob;
}

/// A raster image: pixels in tiles, with an optional palette. Rows run from top to bottom.
///
/// A pixel is `planes` samples of `bitsPerPlane` bits, interleaved: gray or a palette index; gray and
/// opacity; RGB; RGBA. Samples below 8 bits are packed from the high bit down, pixels without a gap; 16-bit
/// samples are little-endian. A row of a tile is padded to whole bytes; the padding is no part of the image.
///
/// Pixels above 1 MiB are held in a nameless file of the temporary folder, mapped into memory, not on the
/// heap. Copies share the pixels until one of them is edited, which gives that one pixels of its own: copies
/// may be used and edited by several threads at the same time, each by one. Images of documents are shared
/// through counted references (UDIIMAGE below) and are not edited any more.
class FOM_API RIMAGE {
public:
    struct Rgb {
        std::uint8_t r = 0, g = 0, b = 0;
        friend bool operator==(const Rgb&, const Rgb&) = default;
    };
    /// One tile: `bounds` within the image (right and bottom exclusive), its first row and the step between
    /// rows.
    struct Tile {
        RECT bounds;
        const std::uint8_t* data = nullptr;
        std::size_t stride = 0;
    };
    struct MutableTile {
        RECT bounds;
        std::uint8_t* data = nullptr;
        std::size_t stride = 0;
    };

    /// An image of zeros: 1 to 4 planes of 1, 2, 4, 8 or 16 bits each. Null when a size is 0 or unreasonable
    /// (above 65,535 pixels an edge or 1 GiB in all). Throws bad_alloc, also when there is no room for the
    /// pixels in the temporary folder.
    static std::unique_ptr<RIMAGE> Create(std::uint32_t width, std::uint32_t height, unsigned planes,
                                          unsigned bitsPerPlane, std::uint32_t tileEdge = 256);
    RIMAGE(const RIMAGE& other);
    RIMAGE& operator=(const RIMAGE& other);
    ~RIMAGE();

    std::uint32_t GetWidth() const noexcept { return m_width; }
    std::uint32_t GetHeight() const noexcept { return m_height; }
    unsigned GetPlanes() const noexcept { return m_planes; }
    unsigned GetBitsPerPlane() const noexcept { return m_bitsPerPlane; }
    const std::vector<Rgb>& GetPalette() const noexcept { return m_palette; }
    void SetPalette(std::vector<Rgb> palette) { m_palette = std::move(palette); }

    std::size_t GetNumTiles() const noexcept;
    /// Tiles in rows from the left top. An empty tile for an index beyond the last. The bytes stay where they
    /// are as long as the image lives and is not edited.
    Tile GetTile(std::size_t index) const noexcept;
    /// The same for writing, until the image is copied or handed to a UDIIMAGE. Throws bad_alloc when pixels
    /// that a copy shares find no room to become the image's own; nothing has changed then.
    MutableTile EditTile(std::size_t index);
    /// Sample `plane` of a pixel as it is stored; 0 outside the image.
    std::uint16_t GetSample(std::uint32_t x, std::uint32_t y, unsigned plane) const noexcept;
    /// Reads row `y` as 8-bit RGBA, as many whole pixels as fit into `rgba`; an index beyond the palette
    /// reads as black. A row outside the image writes nothing.
    void ReadRowRGBA(std::uint32_t y, std::span<std::uint8_t> rgba) const noexcept;
    /// Writes row `y` of an 8-bit image. Does nothing unless `row` holds exactly one byte for each sample of
    /// the row. Throws as EditTile does.
    void WriteRow(std::uint32_t y, std::span<const std::uint8_t> row);
    /// Three-way and exact: width, height, planes, bits, palette, then pixels row by row, sample by sample
    /// (the low byte of a 16-bit sample first). How the pixels are cut into tiles does not matter, nor does
    /// the padding of rows.
    int CompareTo(const RIMAGE& other) const noexcept;

private:
    RIMAGE();
    std::uint32_t TilesAcross() const noexcept;
    std::size_t RowBytes(std::uint32_t pixels) const noexcept;
    RECT TileBounds(std::size_t index) const noexcept;
    std::size_t TileStart(const RECT& bounds) const noexcept;
    int CompareRow(const RIMAGE& other, std::uint32_t y) const noexcept;

    std::vector<Rgb> m_palette;  // first, as assigning the others cannot fail
    std::uint32_t m_width = 0, m_height = 0, m_tileEdge = 0;
    unsigned m_planes = 0, m_bitsPerPlane = 0;
    host::detail::RefPtr<host::detail::FlatBlob> m_pixels;  // tile after tile, each row after row
};

/// Walks an image tile by tile. The image outlives it.
class FOM_API RIPTileParser {
public:
    /// The whole image.
    explicit RIPTileParser(const RIMAGE& image) noexcept : m_image(image) {}
    /// The next tile in order; empty after the last.
    std::optional<RIMAGE::Tile> Next() noexcept;

private:
    const RIMAGE& m_image;
    std::size_t m_next = 0;
};

/// A counted reference on an image as documents hold it. An image may be a view on a base image, whose pixels
/// it shares. All functions accept null. Counts are atomic.
struct UDIIMAGE;
using HUDIIMAGE = UDIIMAGE*;

/// A new image with one reference that takes over `raster`. Null for null. Throws bad_alloc.
FOM_API HUDIIMAGE UDIIMGCreateFromRIMAGE(std::unique_ptr<RIMAGE> raster);
/// A new image, with one reference, that shows `base`'s pixels and keeps `base` alive. Null for null. Throws
/// bad_alloc.
FOM_API HUDIIMAGE UDIIMGCreateView(HUDIIMAGE base);
/// The same image with one more reference.
FOM_API HUDIIMAGE UDIIMGDuplicate(HUDIIMAGE image) noexcept;
/// Drops one reference; the last one frees the image.
FOM_API void UDIIMGRelease(HUDIIMAGE image) noexcept;
/// The raster that holds the pixels: that of the base image, at the end of any chain of views. Null for null.
FOM_API RIMAGE* UDIIMGGetBaseImage(HUDIIMAGE image) noexcept;
/// The image that the temporary data `id` holds a reference on; no new reference. Null when it holds none.
/// Only for temporary data whose private pointer, if it has one, is an image.
FOM_API HUDIIMAGE UDIIMGFromTmpFile(std::uint32_t id) noexcept;
/// RIMAGE::CompareTo; null sorts before an image.
FOM_API int RCF_CompareRImage(const RIMAGE* a, const RIMAGE* b) noexcept;
/// Releases the image that the temporary data holds, deletes the entry and sets the identifier to 0.
FOM_API void FILLD_ZapTmpFileUdiImage(std::uint32_t& id) noexcept;
/// A duplicate of temporary data that holds an image, with a reference of its own; 0 for 0 or for an entry
/// that is gone. Throws bad_alloc.
FOM_API std::uint32_t UDIIMGDuplicateTmpFile(std::uint32_t id);

namespace host {
/// Image objects alive now, for leak checks.
FOM_API std::size_t LiveImages() noexcept;
}  // namespace host
