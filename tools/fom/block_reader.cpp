#include "fom/block_reader.h"

#include <algorithm>

#include "host/base/little_endian.h"
#include "host/base/md5.h"

namespace command {
namespace {

bool HasDigest(std::span<const std::uint8_t> bytes) noexcept {
    host::Md5 md5;
    md5.Update(bytes.data(), bytes.size() - kDigestSize);
    const host::Md5::Digest digest = md5.Finish();
    return std::equal(digest.begin(), digest.end(), bytes.end() - kDigestSize);
}

}  // namespace

bool BlockReader::Append(std::uint64_t size) {
    if (Remaining() < size) return false;
    const std::size_t before = m_bytes.size();
    m_bytes.resize(before + static_cast<std::size_t>(size));
    const std::size_t got = m_stream.Read(m_bytes.data() + before, static_cast<std::size_t>(size));
    m_offset += got;
    return got == size;
}

std::optional<DocumentVersion> BlockReader::ReadHead(host::Error& fault) {
    const auto fail = [&fault](std::uint64_t offset, std::string reason) {
        fault = DocumentFault(offset, std::move(reason));
        return std::nullopt;
    };
    m_bytes.clear();
    const bool whole = Append(kHeadSize);
    const std::span head(m_bytes);
    if (!whole || !std::equal(kDocumentSignature.begin(), kDocumentSignature.end(), head.begin()))
        return fail(0, "not a document");
    if (!HasDigest(head)) return fail(0, "the head is damaged");
    const auto format = host::LoadLittle<std::uint32_t>(head.data() + kFormatVersionAt);
    const auto version = host::LoadLittle<std::uint32_t>(head.data() + kDocumentVersionAt);
    if (format != kFormatVersion)
        return fail(kFormatVersionAt, "unknown format version " + std::to_string(format));
    if (!IsKnownVersion(version))
        return fail(kDocumentVersionAt, "unknown document version " + std::to_string(version));
    return static_cast<DocumentVersion>(version);
}

BlockReader::Result BlockReader::Next(Block& block, host::Error& fault) {
    const auto cut = [&] {
        fault = DocumentFault(m_offset + Remaining(), "the file ends within a block");
        return Result::Broken;
    };
    block.offset = m_offset;
    if (Remaining() == 0) {
        fault = DocumentFault(m_offset, "the end block is missing");
        return Result::Broken;
    }
    m_bytes.clear();
    if (!Append(kBlockHead)) return cut();
    block.tag = host::LoadLittle<std::uint32_t>(m_bytes.data());
    const auto size = host::LoadLittle<std::uint32_t>(m_bytes.data() + 4);
    if (!Append(std::uint64_t{size} + kDigestSize)) return cut();
    block.payload = std::span<const std::uint8_t>(m_bytes).subspan(kBlockHead, size);
    if (HasDigest(m_bytes)) return Result::Block;
    fault = DocumentFault(block.offset, "the block is damaged: its digest is another one");
    return Result::Damaged;
}

std::uint64_t BlockReader::Remaining() const noexcept {
    return m_stream.GetRemaining().value_or(0);
}

}  // namespace command
