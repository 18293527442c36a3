#pragma once

#include <cstdint>
#include <span>

#include "host/base/memory.h"

namespace host {

/// Keeps a block locked while it lives; no bytes for null.
class LockedBlock {
public:
    explicit LockedBlock(HMEM block) noexcept
        : m_block(block), m_bytes(static_cast<std::uint8_t*>(MEMMANLock(block)), MEMMANGetSize(block)) {}
    ~LockedBlock() { MEMMANUnlock(m_block); }
    LockedBlock(const LockedBlock&) = delete;
    LockedBlock& operator=(const LockedBlock&) = delete;

    std::span<std::uint8_t> Bytes() const noexcept { return m_bytes; }

private:
    HMEM m_block;
    std::span<std::uint8_t> m_bytes;
};

}  // namespace host
