#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace svg {

/// Whether a reference carries its data in itself.
bool IsDataUri(std::string_view reference);

/// What a "data:" URI carries.
struct DataUri {
    /// As declared, in lower case and without parameters; may be empty.
    std::string mediaType;
    std::string bytes;
};

/// Decodes a data URI, base64 or percent-encoded; nothing when it is damaged.
std::optional<DataUri> DecodeDataUri(std::string_view reference);

/// A "data:" URI in base64.
std::string EncodeDataUri(std::string_view mediaType, std::span<const std::byte> bytes);

/// The raster format that the bytes start as: "image/png", "image/jpeg", or empty.
std::string_view SniffImageType(std::string_view bytes);

}  // namespace svg
