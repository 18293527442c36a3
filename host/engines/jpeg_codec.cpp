#include "host/engines/image_codecs.h"

#include "engines/codec_limits.h"

#ifdef FOM_HAVE_JPEG
#include <csetjmp>
#include <cstdio>  // jpeglib.h needs it
#include <jpeglib.h>
#include <vector>
#endif

namespace host {

#ifdef FOM_HAVE_JPEG

namespace {

/// A block of 64 pixels takes at least one bit of the data.
constexpr std::uint64_t kPixelsPerByte = 64 * 8;
/// Scans beyond any sane progressive file: each one costs a pass over all coefficients.
constexpr int kMostScans = 100;
/// What decoding may hold beside the image, by the largest progressive image that is allowed.
constexpr long kMostMemory = 512L << 20;

struct JpegErrors {
    jpeg_error_mgr base{};
    std::jmp_buf jump{};
    char message[JMSG_LENGTH_MAX]{};
};

/// All that decoding needs; lives outside of the function that a fault jumps back to.
struct JpegReader {
    jpeg_decompress_struct info{};
    JpegErrors errors;
    jpeg_progress_mgr progress{};
    std::unique_ptr<RIMAGE> image;
    std::vector<std::uint8_t> row;
    std::vector<std::uint8_t> rgb;
    JpegReader() = default;
    ~JpegReader() { jpeg_destroy_decompress(&info); }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
};

[[noreturn]] void StopOnError(j_common_ptr info) {
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    errors->base.format_message(info, errors->message);
    std::longjmp(errors->jump, 1);
}

void StopOnWarning(j_common_ptr info, int level) {
    // A warning tells of damaged or missing data, which would show as wrong pixels.
    if (level < 0) StopOnError(info);
}

void StopOnManyScans(j_common_ptr info) {
    if (reinterpret_cast<j_decompress_ptr>(info)->input_scan_number <= kMostScans) return;
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    std::snprintf(errors->message, sizeof errors->message, "the image has too many scans");
    std::longjmp(errors->jump, 1);
}

void Refuse(JpegReader& reader, const char* reason) {
    std::snprintf(reader.errors.message, sizeof reader.errors.message, "%s", reason);
}

void Prepare(JpegReader& reader) {
    reader.info.err = jpeg_std_error(&reader.errors.base);
    reader.errors.base.error_exit = StopOnError;
    reader.errors.base.emit_message = StopOnWarning;
    reader.errors.base.output_message = [](j_common_ptr) {};
    reader.progress.progress_monitor = StopOnManyScans;
}

/// Makes the image and the row buffers once the header is known.
bool MakeImage(JpegReader& reader, std::size_t fileSize) {
    jpeg_decompress_struct& info = reader.info;
    if (const char* reason = RefuseSize(info.image_width, info.image_height, fileSize, kPixelsPerByte)) {
        Refuse(reader, reason);
        return false;
    }
    const bool gray = info.jpeg_color_space == JCS_GRAYSCALE;
    const bool cmyk = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    info.out_color_space = gray ? JCS_GRAYSCALE : cmyk ? JCS_CMYK : JCS_RGB;
    reader.row.resize(std::size_t{info.image_width} * (gray ? 1 : cmyk ? 4 : 3));
    if (cmyk) reader.rgb.resize(std::size_t{info.image_width} * 3);
    reader.image = RIMAGE::Create(info.image_width, info.image_height, gray ? 1 : 3, 8);
    return reader.image != nullptr;
}

void StoreRow(JpegReader& reader, std::uint32_t y) {
    if (reader.rgb.empty()) return reader.image->WriteRow(y, reader.row);
    // Files that carry the marker hold their inks inverted: 255 is no ink.
    const unsigned flip = reader.info.saw_Adobe_marker ? 0 : 255;
    for (std::size_t x = 0; x < reader.rgb.size() / 3; ++x) {
        const unsigned black = reader.row[4 * x + 3] ^ flip;
        for (std::size_t i = 0; i < 3; ++i)
            reader.rgb[3 * x + i] =
                static_cast<std::uint8_t>(((reader.row[4 * x + i] ^ flip) * black + 127) / 255);
    }
    reader.image->WriteRow(y, reader.rgb);
}

/// Faults inside the library come back here. No object with a destructor may live in this function.
bool Decode(JpegReader& reader, std::span<const std::byte> bytes) {
    jpeg_decompress_struct& info = reader.info;
    if (setjmp(reader.errors.jump) != 0) return false;
    jpeg_create_decompress(&info);
    info.progress = &reader.progress;
    info.mem->max_memory_to_use = kMostMemory;
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(bytes.data()),
                 static_cast<unsigned long>(bytes.size()));
    jpeg_read_header(&info, TRUE);
    if (!MakeImage(reader, bytes.size())) return false;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        unsigned char* row = reader.row.data();
        const std::uint32_t y = info.output_scanline;
        jpeg_read_scanlines(&info, &row, 1);
        StoreRow(reader, y);
    }
    jpeg_finish_decompress(&info);
    return true;
}

}  // namespace

std::unique_ptr<RIMAGE> ReadJpeg(std::span<const std::byte> bytes, Error& error) {
    constexpr const char* kWhat = "JPEG image";
    if (bytes.empty()) return FailImage(error, kWhat, "the file is empty");
    JpegReader reader;
    Prepare(reader);
    if (!Decode(reader, bytes))
        return FailImage(error, kWhat,
                         reader.errors.message[0] ? reader.errors.message : "the image is too large");
    return std::move(reader.image);
}

bool CanReadJpeg() noexcept {
    return true;
}

#else

std::unique_ptr<RIMAGE> ReadJpeg(std::span<const std::byte>, Error& error) {
    return FailImage(error, "JPEG image", "this build does not read JPEG");
}

bool CanReadJpeg() noexcept {
    return false;
}

#endif

}  // namespace host
