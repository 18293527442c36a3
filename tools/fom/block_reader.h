#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/base/error.h"
#include "host/stream/file_stream.h"

#include "fom/document_format.h"

namespace command {

/// A block of a document file; the payload belongs to the reader, until it reads the next one.
struct Block {
    std::uint32_t tag = 0;
    std::uint64_t offset = 0;  ///< of the block's head in the file
    std::span<const std::uint8_t> payload;

    std::uint64_t PayloadOffset() const noexcept { return offset + kBlockHead; }
};

/// What stands at an offset of the file is not as it should be.
inline host::Error DocumentFault(std::uint64_t offset, std::string reason) {
    return {.what = {}, .offset = offset, .line = 0, .reason = std::move(reason)};
}

/// Goes through the blocks of a document file and checks their digests. Throws bad_alloc.
class BlockReader {
public:
    enum class Result {
        Block,    ///< a whole one
        Damaged,  ///< one with a wrong digest; the next one may be read
        Broken    ///< none, and there can be no further one
    };

    /// The stream stands at the file's beginning and knows how much it has.
    explicit BlockReader(AbstractFileStream& stream) : m_stream(stream) {}

    /// The document's version; first of all. Empty, with `fault` filled, for another file.
    std::optional<DocumentVersion> ReadHead(host::Error& fault);
    /// `fault` is filled unless a block was read.
    Result Next(Block& block, host::Error& fault);
    /// Where the next block begins.
    std::uint64_t Offset() const noexcept { return m_offset; }
    /// Bytes after that.
    std::uint64_t Remaining() const noexcept;

private:
    /// Appends bytes of the file; false when there are fewer.
    bool Append(std::uint64_t size);

    AbstractFileStream& m_stream;
    std::uint64_t m_offset = 0;
    std::vector<std::uint8_t> m_bytes;  // of the block, its head first
};

}  // namespace command
