#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "host/base/memory.h"

namespace host {

/// Owns a block of movable memory.
class MemoryBlock {
public:
    /// A block with these bytes. Throws bad_alloc.
    explicit MemoryBlock(std::span<const std::uint8_t> bytes);
    ~MemoryBlock() { MEMMANFree(m_block); }
    MemoryBlock(MemoryBlock&& other) noexcept : m_block(other.m_block) { other.m_block = nullptr; }
    MemoryBlock(const MemoryBlock&) = delete;
    MemoryBlock& operator=(const MemoryBlock&) = delete;

    HMEM Get() const noexcept { return m_block; }

private:
    HMEM m_block;
};

/// Whether both blocks have the same bytes; two null handles are the same.
bool HaveSameBytes(HMEM a, HMEM b) noexcept;

}  // namespace host
