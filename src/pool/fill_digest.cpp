#include "pool/fill_digest.h"

#include <array>
#include <cstddef>

#include "host/base/temp_data.h"

namespace VyrFOM {
namespace {

constexpr std::size_t kPiece = 16384;

void AddTile(host::Md5& md5, const RIMAGE::Tile& tile, unsigned bitsPerPixel) noexcept {
    const auto width = static_cast<std::size_t>(tile.bounds.right - tile.bounds.left);
    const auto height = static_cast<std::size_t>(tile.bounds.bottom - tile.bounds.top);
    // Bits beyond the last whole byte of a row do not take part.
    const std::size_t rowBytes = width * bitsPerPixel / 8;
    if (rowBytes == tile.stride) {
        md5.Update(tile.data, rowBytes * height);
        return;
    }
    for (std::size_t row = 0; row < height; ++row)
        md5.Update(tile.data + row * tile.stride, rowBytes);
}

}  // namespace

host::Md5::Digest DigestOfTmpFile(unsigned id) {
    const std::unique_ptr<TmpStream> stream = id != 0 ? TMPOpenTmpFile(id) : nullptr;
    if (!stream) return {};
    host::Md5 md5;
    std::array<std::byte, kPiece> piece;
    while (const std::size_t size = stream->Read(piece.data(), piece.size()))
        md5.Update(piece.data(), size);
    return md5.Finish();
}

host::Md5::Digest DigestOfTmpImage(unsigned id) {
    const RIMAGE* image = id != 0 ? UDIIMGGetBaseImage(UDIIMGFromTmpFile(id)) : nullptr;
    return image ? DigestOfImage(*image) : host::Md5::Digest{};
}

host::Md5::Digest DigestOfImage(const RIMAGE& image) noexcept {
    host::Md5 md5;
    RIPTileParser parser(image);
    while (const std::optional<RIMAGE::Tile> tile = parser.Next())
        AddTile(md5, *tile, image.GetPlanes() * image.GetBitsPerPlane());
    static_assert(sizeof(RIMAGE::Rgb) == 3, "the palette is hashed as its bytes");
    md5.Update(image.GetPalette().data(), 3 * image.GetPalette().size());
    return md5.Finish();
}

}  // namespace VyrFOM
