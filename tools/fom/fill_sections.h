#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "host/gfx/enums.h"

#include "fom/document_file.h"

namespace command {

/// A part of a fill's record in a document (docs/formats/stream_records.md). Offsets count from the beginning
/// of the record. A record of a 12.0 document is one part, without tag and size.
struct FillSection {
    std::size_t offset = 0;
    std::uint32_t tag = 0;
    std::uint32_t size = 0;  ///< of the payload, as the section says
    std::size_t bytes = 0;   ///< of the payload, as it is: mostly the same, sometimes 4 fewer
    std::uint32_t kind = 0;
    std::size_t body = 0;  ///< where the body, or legacy record, begins
    std::uint32_t length = 0;
    std::size_t after = 0;  ///< bytes behind it: hatch lines, bitmap, image, temporary data
};

inline constexpr std::uint32_t kEndOfFill = 0, kLegacySection = 1, kCurrentSection = 2;

/// The sections of a record; empty for one that is not of the form of the version.
std::optional<std::vector<FillSection>> ReadFillSections(std::span<const std::uint8_t> record,
                                                         DocumentVersion version);

/// Whether fills of the kind may have temporary data.
constexpr bool HasTemporaryData(std::uint32_t kind) noexcept {
    return kind == FillColorBitmap || kind == FillVector || kind == FillTexture;
}
/// Legacy records hold the number that temporary data has in this process, which says nothing but that there
/// is some. Puts 1 in its place, so that equal fills have equal records.
void HideTemporaryNumbers(std::span<std::uint8_t> record, DocumentVersion version);

}  // namespace command
