#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fom/document_file.h"

namespace command {

// What document files are made of: docs/formats/document.md.

/// The first byte is no text, and a transfer as text would change the line ends.
inline constexpr std::array<std::uint8_t, 8> kDocumentSignature{0xF0, 'F', 'O', 'M', '\r', '\n', 0x1A, '\n'};
inline constexpr std::uint32_t kFormatVersion = 1;

inline constexpr std::size_t kDigestSize = 16;
/// Signature, format version, document version and their digest.
inline constexpr std::size_t kFormatVersionAt = kDocumentSignature.size();
inline constexpr std::size_t kDocumentVersionAt = kFormatVersionAt + 4;
inline constexpr std::size_t kHeadSize = kDocumentVersionAt + 4 + kDigestSize;
/// Tag and payload size, which open a block.
inline constexpr std::size_t kBlockHead = 8;
/// What a block has beside its payload.
inline constexpr std::size_t kBlockFrame = kBlockHead + kDigestSize;

inline constexpr std::uint32_t BlockTag(const char (&name)[5]) noexcept {
    return std::uint32_t(std::uint8_t(name[0])) | std::uint32_t(std::uint8_t(name[1])) << 8 |
           std::uint32_t(std::uint8_t(name[2])) << 16 | std::uint32_t(std::uint8_t(name[3])) << 24;
}

inline constexpr std::uint32_t kFillsTag = BlockTag("FILL");
inline constexpr std::uint32_t kOutlinesTag = BlockTag("OUTL");
inline constexpr std::uint32_t kDrawingsTag = BlockTag("DRAW");
inline constexpr std::uint32_t kShapesTag = BlockTag("SHAP");
inline constexpr std::uint32_t kEndTag = BlockTag("END ");

/// Sizes below which there is no record, length words included: they bound how much a file can claim to hold.
inline constexpr std::size_t kSmallestFill = 4 + 16;
inline constexpr std::size_t kSmallestOutline = 4 + 24;
inline constexpr std::size_t kSmallestDrawing = 8 + kDigestSize + 4 + 2 + 1 + 2;
inline constexpr std::size_t kSmallestOmission = 8 + 1 + 1;
inline constexpr std::size_t kMatrixSize = 48;
inline constexpr std::size_t kShapeSize = 12;
inline constexpr std::size_t kStrokeFillSize = 12;

/// How many there are of everything.
struct DocumentCounts {
    std::uint32_t fills = 0, outlines = 0, drawings = 0, shapes = 0;
    bool operator==(const DocumentCounts&) const = default;
};

bool IsKnownVersion(std::uint32_t version) noexcept;
/// "12.0", "12.5", "current".
const char* VersionName(DocumentVersion version) noexcept;
/// The letters of a tag, or its number in hexadecimal digits.
std::string TagName(std::uint32_t tag);

}  // namespace command
