#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <vector>

#include "host/base/memory.h"
#include "host/stream/file_stream.h"

namespace VyrFOM {

/// Data is copied between streams, memory and temporary data in pieces of at most this many bytes.
inline constexpr std::size_t kPieceSize = 16384;

struct FreeBlock {
    void operator()(HMEM block) const noexcept { MEMMANFree(block); }
};
using OwnedBlock = std::unique_ptr<HMEM__, FreeBlock>;

/// Two numbers that follow each other, as sections open.
struct WordPair {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
};

/// 0 where the bytes are not all there.
std::uint32_t ReadWord(AbstractFileStream& stream) noexcept;
WordPair ReadWords(AbstractFileStream& stream) noexcept;
/// 0 beyond the bytes.
std::uint32_t WordAt(std::span<const std::uint8_t> bytes, std::size_t at) noexcept;

/// The next `size` bytes, or as many as there are; memory is taken as they arrive. Throws bad_alloc.
std::vector<std::uint8_t> ReadBytes(AbstractFileStream& stream, std::uint32_t size);
/// A block of the next `size` bytes. Null, all that are there read, for fewer and where there is no memory
/// for them.
OwnedBlock ReadBlock(AbstractFileStream& stream, std::uint32_t size);
void SkipBytes(AbstractFileStream& stream, std::uint32_t size) noexcept;

void WriteWords(AbstractFileStream& stream, std::initializer_list<std::uint32_t> values) noexcept;
void WriteBytes(AbstractFileStream& stream, std::span<const std::uint8_t> bytes) noexcept;
/// Of the bytes that WriteBlock writes; 0 for null and for a block of more bytes than the stored form can
/// say.
std::uint32_t StoredSize(HMEM block) noexcept;
/// Size and bytes. A block that is too large is written as an empty one and clears the good flag.
void WriteBlock(AbstractFileStream& stream, HMEM block) noexcept;

}  // namespace VyrFOM
