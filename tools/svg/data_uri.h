#pragma once

#include <optional>
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

/// The raster format that the bytes start as: "image/png", "image/jpeg", or empty.
std::string_view SniffImageType(std::string_view bytes);

}  // namespace svg
