#include "host/base/memory.h"

#include <atomic>
#include <cassert>
#include <cstring>
#include <new>

namespace {

/// Stands before the bytes; its size keeps them aligned as the allocator aligns.
struct alignas(16) BlockHeader {
    std::size_t size;
    std::atomic<std::uint32_t> locks;
};

// Above this no allocator of a machine of ours answers; some of them (checked builds) abort when asked.
constexpr std::uint64_t kMaxBlock = std::uint64_t{1} << 38;

constinit std::atomic<std::size_t> g_liveBlocks{0};
constinit BlockHeader g_unresolved{0, 0};

BlockHeader* Header(HMEM block) noexcept {
    return reinterpret_cast<BlockHeader*>(block);
}

void* Bytes(HMEM block) noexcept {
    return Header(block) + 1;
}

}  // namespace

HMEM MEMMANAlloc(std::size_t size, bool clear) noexcept {
    if (size > kMaxBlock) return nullptr;
    static_assert(alignof(BlockHeader) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    void* memory = ::operator new(sizeof(BlockHeader) + size, std::nothrow);
    if (!memory) return nullptr;
    const HMEM block = reinterpret_cast<HMEM>(::new (memory) BlockHeader{size, 0});
    if (clear) std::memset(Bytes(block), 0, size);
    g_liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

void* MEMMANLock(HMEM block) noexcept {
    if (!block) return nullptr;
    Header(block)->locks.fetch_add(1, std::memory_order_relaxed);
    return Bytes(block);
}

void MEMMANUnlock(HMEM block) noexcept {
    if (!block) return;
    [[maybe_unused]] const auto before = Header(block)->locks.fetch_sub(1, std::memory_order_relaxed);
    assert(before != 0 && "unlocked more often than locked");
}

std::size_t MEMMANGetSize(HMEM block) noexcept {
    return block ? Header(block)->size : 0;
}

HMEM MEMMANDuplicate(HMEM block) noexcept {
    if (!block) return nullptr;
    HMEM copy = MEMMANAlloc(MEMMANGetSize(block), false);
    if (copy) std::memcpy(Bytes(copy), Bytes(block), MEMMANGetSize(block));
    return copy;
}

void MEMMANFree(HMEM block) noexcept {
    if (!block || block == host::UnresolvedBlock()) return;
    Header(block)->~BlockHeader();
    ::operator delete(static_cast<void*>(block));
    g_liveBlocks.fetch_sub(1, std::memory_order_relaxed);
}

namespace host {
HMEM UnresolvedBlock() noexcept {
    return reinterpret_cast<HMEM>(&g_unresolved);
}

std::size_t LiveMemoryBlocks() noexcept {
    return g_liveBlocks.load(std::memory_order_relaxed);
}
}  // namespace host
