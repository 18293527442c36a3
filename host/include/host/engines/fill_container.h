#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <span>
#include <vector>

#include "host/base/error.h"
#include "host/base/export.h"

namespace host {

enum class FillContainerSubtype : int { ColorBitmap = 0, Vector = 1, Fountain = 2 };

/// A file that holds one fill; docs/formats/fill_container.md.
struct FillContainer {
    FillContainerSubtype subtype = FillContainerSubtype::ColorBitmap;
    /// The fill itself: an image file, SVG text, or a fountain as its own stored form.
    std::vector<std::byte> payload;
};

/// The payload is smaller than 4 GiB.
FOM_API std::vector<std::byte> EncodeFillContainer(const FillContainer& container);
/// Empty, with `error` filled, for anything but a whole container of a known version and subtype.
FOM_API std::optional<FillContainer> DecodeFillContainer(std::span<const std::byte> bytes, Error& error);

/// Saves atomically. False, with `error` filled and the old file as it was, when that fails.
FOM_API bool WriteFillContainer(const std::filesystem::path& path, const FillContainer& container,
                                Error& error);
FOM_API std::optional<FillContainer> ReadFillContainer(const std::filesystem::path& path, Error& error);

}  // namespace host
