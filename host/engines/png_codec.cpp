#include "host/engines/image_codecs.h"

#include "engines/codec_limits.h"

#ifdef FOM_HAVE_PNG
#include <png.h>
#include <vector>
#endif

namespace host {

#ifdef FOM_HAVE_PNG

namespace {

/// Deflate makes at most 1032 bytes of one, and a byte holds at most 8 pixels.
constexpr std::uint64_t kPixelsPerByte = 1032 * 8;

/// The library's reading state, released on every way out.
struct PngReader {
    png_image image{};
    PngReader() noexcept { image.version = PNG_IMAGE_VERSION; }
    ~PngReader() { png_image_free(&image); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
};

/// The 8-bit format of ours nearest to the file's.
png_uint_32 ChooseFormat(png_uint_32 stored) noexcept {
    if ((stored & PNG_FORMAT_FLAG_ALPHA) != 0) return PNG_FORMAT_RGBA;
    if ((stored & PNG_FORMAT_FLAG_COLORMAP) != 0) return PNG_FORMAT_RGB_COLORMAP;
    return (stored & PNG_FORMAT_FLAG_COLOR) != 0 ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
}

/// Decodes into `pixels`, rows from the top without padding, and `palette`.
bool Decode(PngReader& reader, std::vector<std::uint8_t>& pixels, std::vector<RIMAGE::Rgb>& palette) {
    png_image& image = reader.image;
    pixels.resize(PNG_IMAGE_SIZE(image));
    std::vector<std::uint8_t> colors(PNG_IMAGE_COLORMAP_SIZE(image));
    const bool mapped = (image.format & PNG_FORMAT_FLAG_COLORMAP) != 0;
    if (!png_image_finish_read(&image, nullptr, pixels.data(), 0, mapped ? colors.data() : nullptr))
        return false;
    for (std::size_t i = 0; mapped && i < image.colormap_entries; ++i)
        palette.push_back({colors[3 * i], colors[3 * i + 1], colors[3 * i + 2]});
    return true;
}

}  // namespace

std::unique_ptr<RIMAGE> ReadPng(std::span<const std::byte> bytes, Error& error) {
    constexpr const char* kWhat = "PNG image";
    PngReader reader;
    if (!png_image_begin_read_from_memory(&reader.image, bytes.data(), bytes.size()))
        return FailImage(error, kWhat, reader.image.message);
    const std::uint32_t width = reader.image.width;
    const std::uint32_t height = reader.image.height;
    if (const char* reason = RefuseSize(width, height, bytes.size(), kPixelsPerByte))
        return FailImage(error, kWhat, reason);
    // Without this, 16-bit values of a file that names no colour space would be taken as linear light.
    reader.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    reader.image.format = ChooseFormat(reader.image.format);
    std::vector<std::uint8_t> pixels;
    std::vector<RIMAGE::Rgb> palette;
    if (!Decode(reader, pixels, palette)) return FailImage(error, kWhat, reader.image.message);
    const std::size_t rowSize = PNG_IMAGE_ROW_STRIDE(reader.image);
    std::unique_ptr<RIMAGE> image = RIMAGE::Create(width, height, static_cast<unsigned>(rowSize / width), 8);
    if (!image) return FailImage(error, kWhat, "the image is too large");
    for (std::uint32_t y = 0; y < height; ++y)
        image->WriteRow(y, std::span(pixels).subspan(y * rowSize, rowSize));
    image->SetPalette(std::move(palette));
    return image;
}

bool CanReadPng() noexcept {
    return true;
}

#else

std::unique_ptr<RIMAGE> ReadPng(std::span<const std::byte>, Error& error) {
    return FailImage(error, "PNG image", "this build does not read PNG");
}

bool CanReadPng() noexcept {
    return false;
}

#endif

}  // namespace host
