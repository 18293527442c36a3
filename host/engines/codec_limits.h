#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "host/base/error.h"
#include "host/gfx/image.h"

namespace host {

/// The most pixels that an image file may have.
inline constexpr std::uint64_t kMostPixels = std::uint64_t{64} << 20;

/// Fills `error` for an image file of format `what`.
inline std::unique_ptr<RIMAGE> FailImage(Error& error, const char* what, std::string reason) {
    error = {what, 0, 0, std::move(reason)};
    return nullptr;
}

/// Why an image of this size cannot come from `fileSize` bytes that hold at most `pixelsPerByte` pixels each;
/// null when it can. Asked before anything of the image's size is allocated.
inline const char* RefuseSize(std::uint64_t width, std::uint64_t height, std::uint64_t fileSize,
                              std::uint64_t pixelsPerByte) noexcept {
    if (width == 0 || height == 0) return "the image has no pixels";
    if (width > 65535 || height > 65535 || width * height > kMostPixels) return "the image is too large";
    if (width * height > (fileSize + 64) * pixelsPerByte)
        return "the file is too short for an image of its size";
    return nullptr;
}

}  // namespace host
