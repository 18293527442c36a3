#include "host/gfx/image_stream.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "host/base/little_endian.h"

namespace {

// docs/formats/image.md
constexpr std::uint32_t kSignature = 0x494D4F46;  // "FOMI"
constexpr std::uint16_t kVersion = 1;
constexpr std::uint16_t kHeaderSize = 28;
constexpr std::uint32_t kMaxPalette = 65536;
constexpr std::uint32_t kMaxPixelBits = 64;

struct Header {
    std::uint32_t signature = kSignature;
    std::uint16_t version = kVersion;
    std::uint16_t size = kHeaderSize;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t planes = 0;
    std::uint16_t bits = 0;
    std::uint32_t colors = 0;
    std::uint32_t payload = 0;  // bytes of palette and rows

    std::uint32_t PixelBits() const noexcept { return std::uint32_t{planes} * bits; }
    std::uint64_t RowBytes() const noexcept { return (std::uint64_t{width} * PixelBits() + 7) / 8; }
    std::uint64_t PayloadBytes() const noexcept { return std::uint64_t{colors} * 3 + RowBytes() * height; }
};

using HeaderBytes = std::array<std::uint8_t, kHeaderSize>;

HeaderBytes ToBytes(const Header& header) noexcept {
    HeaderBytes bytes;
    host::LittleWriter writer(bytes.data());
    writer.Write(header.signature);
    writer.Write(header.version);
    writer.Write(header.size);
    writer.Write(header.width);
    writer.Write(header.height);
    writer.Write(header.planes);
    writer.Write(header.bits);
    writer.Write(header.colors);
    writer.Write(header.payload);
    return bytes;
}

bool ReadWhole(TmpStream& stream, std::span<std::uint8_t> to) {
    return stream.Read(to.data(), to.size()) == to.size();
}

bool WriteWhole(TmpStream& stream, std::span<const std::uint8_t> from) {
    return stream.Write(from.data(), from.size()) == from.size();
}

/// Leaves the stream behind the header. Sizes are as the stream's own before anybody trusts them.
std::optional<Header> ReadHeader(TmpStream& stream) {
    HeaderBytes bytes;
    stream.Seek(0);
    if (!ReadWhole(stream, bytes)) return std::nullopt;
    Header header;
    host::LittleReader reader(bytes);
    reader.Read(header.signature);
    reader.Read(header.version);
    reader.Read(header.size);
    reader.Read(header.width);
    reader.Read(header.height);
    reader.Read(header.planes);
    reader.Read(header.bits);
    reader.Read(header.colors);
    reader.Read(header.payload);
    if (header.signature != kSignature || header.version != kVersion || header.size < kHeaderSize)
        return std::nullopt;
    const bool known = header.PixelBits() <= kMaxPixelBits && header.colors <= kMaxPalette &&
                       header.width <= UINT16_MAX && header.height <= UINT16_MAX;
    if (!known || header.payload != header.PayloadBytes()) return std::nullopt;
    if (stream.GetSize() != std::uint64_t{header.size} + header.payload) return std::nullopt;
    stream.Seek(header.size);
    return header;
}

Header HeaderOf(const RIMAGE& raster) noexcept {
    Header header;
    header.width = raster.GetWidth();
    header.height = raster.GetHeight();
    header.planes = static_cast<std::uint16_t>(raster.GetPlanes());
    header.bits = static_cast<std::uint16_t>(raster.GetBitsPerPlane());
    header.colors = static_cast<std::uint32_t>(raster.GetPalette().size());
    header.payload = static_cast<std::uint32_t>(header.PayloadBytes());
    return header;
}

bool WritePalette(TmpStream& stream, const RIMAGE& raster) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(raster.GetPalette().size() * 3);
    for (const RIMAGE::Rgb& color : raster.GetPalette())
        bytes.insert(bytes.end(), {color.r, color.g, color.b});
    return WriteWhole(stream, bytes);
}

bool ReadPalette(TmpStream& stream, std::uint32_t colors, RIMAGE& raster) {
    std::vector<std::uint8_t> bytes(std::size_t{colors} * 3);
    if (!ReadWhole(stream, bytes)) return false;
    std::vector<RIMAGE::Rgb> palette(colors);
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = {bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]};
    raster.SetPalette(std::move(palette));
    return true;
}

/// Tiles side by side: their numbers, and the rows of the image that they cover.
struct TileRow {
    std::size_t first, end;
    std::int32_t top, bottom;
};

TileRow TileRowFrom(const RIMAGE& raster, std::size_t first) noexcept {
    const RECT bounds = raster.GetTile(first).bounds;
    std::size_t end = first + 1;
    while (end < raster.GetNumTiles() && raster.GetTile(end).bounds.top == bounds.top)
        ++end;
    return {first, end, bounds.top, bounds.bottom};
}

/// Samples of less than a byte, one by one: for tiles that do not begin on a byte of the row.
void PackSamples(const RIMAGE& raster, const RECT& bounds, std::int32_t y,
                 std::span<std::uint8_t> row) noexcept {
    const unsigned bits = raster.GetBitsPerPlane();
    std::size_t bit = static_cast<std::size_t>(bounds.left) * raster.GetPlanes() * bits;
    for (std::int32_t x = bounds.left; x < bounds.right; ++x)
        for (unsigned plane = 0; plane < raster.GetPlanes(); ++plane, bit += bits) {
            const unsigned sample =
                raster.GetSample(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), plane);
            const unsigned shift = 8 - static_cast<unsigned>(bit % 8) - bits;
            const unsigned mask = ((1u << bits) - 1) << shift;
            row[bit / 8] = static_cast<std::uint8_t>((row[bit / 8] & ~mask) | sample << shift);
        }
}

/// Row `y` with its padding cleared.
void PackRow(const RIMAGE& raster, const TileRow& tiles, std::int32_t y,
             std::span<std::uint8_t> row) noexcept {
    const std::size_t pixelBits = std::size_t{raster.GetPlanes()} * raster.GetBitsPerPlane();
    for (std::size_t i = tiles.first; i < tiles.end; ++i) {
        const RIMAGE::Tile tile = raster.GetTile(i);
        const std::size_t bit = static_cast<std::size_t>(tile.bounds.left) * pixelBits;
        if (bit % 8 == 0)
            std::copy_n(tile.data + static_cast<std::size_t>(y - tiles.top) * tile.stride, tile.stride,
                        row.begin() + static_cast<std::ptrdiff_t>(bit / 8));
        else
            PackSamples(raster, tile.bounds, y, row);
    }
    const std::size_t padding = row.size() * 8 - raster.GetWidth() * pixelBits;
    row.back() = static_cast<std::uint8_t>(row.back() & (0xFF << padding));
}

bool WriteRows(TmpStream& stream, const RIMAGE& raster, std::size_t rowBytes) {
    std::vector<std::uint8_t> row(rowBytes);
    for (std::size_t first = 0; first < raster.GetNumTiles();) {
        const TileRow tiles = TileRowFrom(raster, first);
        for (std::int32_t y = tiles.top; y < tiles.bottom; ++y) {
            PackRow(raster, tiles, y, row);
            if (!WriteWhole(stream, row)) return false;
        }
        first = tiles.end;
    }
    return true;
}

// Tiles of a new image are 256 pixels wide: each begins on a byte of the row.
void UnpackRow(std::span<const std::uint8_t> row, const TileRow& tiles, std::int32_t y,
               RIMAGE& raster) noexcept {
    const std::size_t pixelBits = std::size_t{raster.GetPlanes()} * raster.GetBitsPerPlane();
    for (std::size_t i = tiles.first; i < tiles.end; ++i) {
        const RIMAGE::MutableTile tile = raster.EditTile(i);
        const std::size_t at = static_cast<std::size_t>(tile.bounds.left) * pixelBits / 8;
        std::copy_n(row.begin() + static_cast<std::ptrdiff_t>(at), tile.stride,
                    tile.data + static_cast<std::size_t>(y - tiles.top) * tile.stride);
    }
}

bool ReadRows(TmpStream& stream, std::size_t rowBytes, RIMAGE& raster) {
    std::vector<std::uint8_t> row(rowBytes);
    for (std::size_t first = 0; first < raster.GetNumTiles();) {
        const TileRow tiles = TileRowFrom(raster, first);
        for (std::int32_t y = tiles.top; y < tiles.bottom; ++y) {
            if (!ReadWhole(stream, row)) return false;
            UnpackRow(row, tiles, y, raster);
        }
        first = tiles.end;
    }
    return true;
}

}  // namespace

bool UDII_WriteImage(TmpStream& stream, HUDIIMAGE image, int format, const ColorContext&) {
    const RIMAGE* raster = UDIIMGGetBaseImage(image);
    if (!raster || format != kUdiImageFormat || raster->GetPalette().size() > kMaxPalette) return false;
    const Header header = HeaderOf(*raster);
    stream.Seek(0);
    return WriteWhole(stream, ToBytes(header)) && WritePalette(stream, *raster) &&
           WriteRows(stream, *raster, static_cast<std::size_t>(header.RowBytes()));
}

HUDIIMAGE UDII_ReadImage(TmpStream& stream, const ColorContext&) {
    const std::optional<Header> header = ReadHeader(stream);
    if (!header) return nullptr;
    auto raster = RIMAGE::Create(header->width, header->height, header->planes, header->bits);
    if (!raster || !ReadPalette(stream, header->colors, *raster)) return nullptr;
    if (!ReadRows(stream, static_cast<std::size_t>(header->RowBytes()), *raster)) return nullptr;
    return UDIIMGCreateFromRIMAGE(std::move(raster));
}
