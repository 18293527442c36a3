#include "engines/memory_block.h"

#include <cstring>
#include <new>

namespace host {

MemoryBlock::MemoryBlock(std::span<const std::uint8_t> bytes) : m_block(MEMMANAlloc(bytes.size(), false)) {
    void* data = MEMMANLock(m_block);
    if (!data) {
        MEMMANFree(m_block);
        throw std::bad_alloc();
    }
    std::memcpy(data, bytes.data(), bytes.size());
    MEMMANUnlock(m_block);
}

bool HaveSameBytes(HMEM a, HMEM b) noexcept {
    if (a == b) return true;
    if (!a || !b) return false;
    const std::size_t size = MEMMANGetSize(a);
    if (size != MEMMANGetSize(b)) return false;
    const void* left = MEMMANLock(a);
    const void* right = MEMMANLock(b);
    const bool same = left && right && std::memcmp(left, right, size) == 0;
    if (right) MEMMANUnlock(b);
    if (left) MEMMANUnlock(a);
    return same;
}

}  // namespace host
