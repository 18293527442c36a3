#include "fom/pattern_content.h"

#include <array>
#include <cstdint>
#include <memory>

#include "host/base/temp_data.h"

namespace command {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;
constexpr std::size_t kPiece = 16384;

}  // namespace

std::string ReadPatternContent(unsigned tmpFile) {
    std::string content;
    const std::unique_ptr<TmpStream> stream = TMPOpenTmpFile(tmpFile);
    if (!stream || stream->GetSize() > kMostBytes) return content;
    std::array<char, kPiece> piece;
    while (const std::size_t size = stream->Read(piece.data(), piece.size()))
        content.append(piece.data(), size);
    return content;
}

}  // namespace command
