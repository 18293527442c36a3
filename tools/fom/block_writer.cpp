#include "fom/block_writer.h"

#include <algorithm>
#include <array>
#include <limits>

#include "host/base/md5.h"

namespace command {

void WriteDocumentHead(AbstractFileStream& stream, DocumentVersion version) noexcept {
    std::array<std::uint8_t, kHeadSize> head;
    std::uint8_t* at = std::copy(kDocumentSignature.begin(), kDocumentSignature.end(), head.data());
    at = host::StoreLittle(at, kFormatVersion);
    at = host::StoreLittle(at, static_cast<std::uint32_t>(version));
    host::Md5 md5;
    md5.Update(head.data(), kHeadSize - kDigestSize);
    const host::Md5::Digest digest = md5.Finish();
    std::copy(digest.begin(), digest.end(), at);
    stream.Write(head.data(), head.size());
}

bool BlockBuilder::Write(AbstractFileStream& stream, std::initializer_list<std::uint32_t> words) {
    const std::size_t size = m_bytes.size() - kBlockHead;
    if (size > std::numeric_limits<std::uint32_t>::max()) return false;
    Set(0, m_tag);
    Set(4, static_cast<std::uint32_t>(size));
    std::size_t at = kBlockHead;
    for (const std::uint32_t word : words) {
        Set(at, word);
        at += 4;
    }
    host::Md5 md5;
    md5.Update(m_bytes.data(), m_bytes.size());
    const host::Md5::Digest digest = md5.Finish();
    Add(digest);
    stream.Write(m_bytes.data(), m_bytes.size());
    Clear();
    return true;
}

}  // namespace command
