#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/base/export.h"

namespace host {

/// MD5 (RFC 1321) of bytes that come in pieces of any size. An identity of data, not a protection.
class FOM_API Md5 {
public:
    using Digest = std::array<std::uint8_t, 16>;

    void Update(const void* data, std::size_t size) noexcept;
    /// The digest of all bytes so far. The object is spent.
    Digest Finish() noexcept;

private:
    static constexpr std::size_t kBlock = 64;

    std::array<std::uint32_t, 4> m_state{0x67452301u, 0xEFCDAB89u, 0x98BADCFEu, 0x10325476u};
    std::uint64_t m_length = 0;  // bytes so far; m_length % 64 of them wait in m_rest
    std::array<std::uint8_t, kBlock> m_rest{};
};

}  // namespace host
