#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>

#include "host/base/memory.h"

namespace host {

/// Owns a block of movable memory.
class MemoryBlock {
public:
    /// A block with these bytes. Throws bad_alloc.
    explicit MemoryBlock(std::span<const std::uint8_t> bytes);
    /// Takes over a new block. Throws bad_alloc for null, which says that there was no memory for it.
    explicit MemoryBlock(HMEM block) : m_block(block) {
        if (!block) throw std::bad_alloc();
    }
    ~MemoryBlock() { MEMMANFree(m_block); }
    MemoryBlock(MemoryBlock&& other) noexcept : m_block(other.m_block) { other.m_block = nullptr; }
    MemoryBlock(const MemoryBlock&) = delete;
    MemoryBlock& operator=(const MemoryBlock&) = delete;

    HMEM Get() const noexcept { return m_block; }

private:
    HMEM m_block;
};

}  // namespace host
