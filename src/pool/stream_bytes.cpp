#include "pool/stream_bytes.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "host/base/little_endian.h"

namespace VyrFOM {

std::uint32_t ReadWord(AbstractFileStream& stream) noexcept {
    std::array<std::uint8_t, 4> bytes;
    return stream.Read(bytes.data(), bytes.size()) == bytes.size() ? WordAt(bytes, 0) : 0;
}

WordPair ReadWords(AbstractFileStream& stream) noexcept {
    std::array<std::uint8_t, 8> bytes;
    if (stream.Read(bytes.data(), bytes.size()) != bytes.size()) return {};
    return {WordAt(bytes, 0), WordAt(bytes, 4)};
}

std::uint32_t WordAt(std::span<const std::uint8_t> bytes, std::size_t at) noexcept {
    std::uint32_t word = 0;
    host::LittleReader reader(bytes);
    if (reader.Skip(at)) reader.Read(word);
    return word;
}

std::vector<std::uint8_t> ReadBytes(AbstractFileStream& stream, std::uint32_t size) {
    const auto rest = stream.GetRemaining();
    if (rest.value_or(0) >= size && size <= kPieceSize) {
        std::vector<std::uint8_t> bytes(size);
        bytes.resize(stream.Read(bytes.data(), size));
        return bytes;
    }
    std::vector<std::uint8_t> bytes;
    if (rest) bytes.reserve(static_cast<std::size_t>(std::min<std::uint64_t>(*rest, size)));
    for (std::size_t at = 0, step = 0; at < size; at += step) {
        step = std::min<std::size_t>(kPieceSize, size - at);
        bytes.resize(at + step);
        const std::size_t got = stream.Read(bytes.data() + at, step);
        if (got < step) {
            bytes.resize(at + got);
            break;
        }
    }
    return bytes;
}

namespace {

/// Where the stream knows that the bytes are there: without a buffer in between.
OwnedBlock ReadKnownBlock(AbstractFileStream& stream, std::uint32_t size) noexcept {
    OwnedBlock block(MEMMANAlloc(size, false));
    if (!block) {
        SkipBytes(stream, size);
        return nullptr;
    }
    auto* to = static_cast<std::uint8_t*>(MEMMANLock(block.get()));
    std::size_t at = 0;
    for (std::size_t step = 0, got = 0; at < size && got == step; at += got) {
        step = std::min<std::size_t>(kPieceSize, size - at);
        got = stream.Read(to + at, step);
    }
    MEMMANUnlock(block.get());
    return at == size ? std::move(block) : nullptr;
}

}  // namespace

OwnedBlock ReadBlock(AbstractFileStream& stream, std::uint32_t size) {
    if (stream.GetRemaining().value_or(0) >= size) return ReadKnownBlock(stream, size);
    const std::vector<std::uint8_t> bytes = ReadBytes(stream, size);
    if (bytes.size() != size) return nullptr;
    OwnedBlock block(MEMMANAlloc(size, false));
    if (!block) return nullptr;
    std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(MEMMANLock(block.get())));
    MEMMANUnlock(block.get());
    return block;
}

void SkipBytes(AbstractFileStream& stream, std::uint32_t size) noexcept {
    std::array<std::uint8_t, kPieceSize> piece;
    while (size != 0) {
        const auto step = static_cast<std::uint32_t>(std::min<std::size_t>(piece.size(), size));
        if (stream.Read(piece.data(), step) != step) return;
        size -= step;
    }
}

void WriteWords(AbstractFileStream& stream, std::initializer_list<std::uint32_t> values) noexcept {
    std::array<std::uint8_t, 32> bytes;
    host::LittleWriter writer(bytes.data());
    for (const std::uint32_t value : values)
        writer.Write(value);
    stream.Write(bytes.data(), values.size() * sizeof(std::uint32_t));
}

void WriteBytes(AbstractFileStream& stream, std::span<const std::uint8_t> bytes) noexcept {
    while (!bytes.empty()) {
        const auto piece = bytes.first(std::min(kPieceSize, bytes.size()));
        stream.Write(piece.data(), piece.size());
        bytes = bytes.subspan(piece.size());
    }
}

std::uint32_t StoredSize(HMEM block) noexcept {
    const std::size_t size = MEMMANGetSize(block);
    return size <= std::numeric_limits<std::uint32_t>::max() ? static_cast<std::uint32_t>(size) : 0;
}

void WriteBlock(AbstractFileStream& stream, HMEM block) noexcept {
    const std::uint32_t size = StoredSize(block);
    if (size != MEMMANGetSize(block)) stream.SetGood(false);
    WriteWords(stream, {size});
    WriteBytes(stream, {static_cast<const std::uint8_t*>(MEMMANLock(block)), size});
    MEMMANUnlock(block);
}

}  // namespace VyrFOM
