#include "engines/memory_block.h"

#include <cstring>

namespace host {

MemoryBlock::MemoryBlock(std::span<const std::uint8_t> bytes)
    : MemoryBlock(MEMMANAlloc(bytes.size(), false)) {
    std::memcpy(MEMMANLock(m_block), bytes.data(), bytes.size());
    MEMMANUnlock(m_block);
}

}  // namespace host
