#include <mutex>
#include <new>
#include <unordered_set>

#include "host/base/hash.h"
#include "host/gfx/arrowhead.h"

#include "base/locked_block.h"
#include "gfx/field_fold.h"

namespace {

/// A block and the hash of its bytes.
struct RegisteredArrow {
    HMEM block;
    std::size_t hash;

    friend bool operator==(const RegisteredArrow& a, const RegisteredArrow& b) noexcept {
        return a.hash == b.hash && host::detail::CompareBlocks(a.block, b.block) == 0;
    }
};

struct HashOf {
    std::size_t operator()(const RegisteredArrow& arrow) const noexcept { return arrow.hash; }
};

std::size_t HashBlock(HMEM block) noexcept {
    const host::LockedBlock locked(block);
    host::Hasher hasher;
    host::detail::HashBytes(hasher, locked.Bytes().data(), locked.Bytes().size());
    return static_cast<std::size_t>(hasher.Finish());
}

class ArrowRegistry {
public:
    /// The known block of the same bytes, which is `block` itself when there was none. Throws bad_alloc.
    HMEM Add(HMEM block) {
        const RegisteredArrow arrow{block, HashBlock(block)};
        const std::lock_guard lock(m_lock);
        return m_arrows.insert(arrow).first->block;
    }

    static ArrowRegistry& Instance() {
        // Never destroyed: records that live until the very end hold its blocks.
        static ArrowRegistry& registry = *new ArrowRegistry;
        return registry;
    }

private:
    std::mutex m_lock;
    std::unordered_set<RegisteredArrow, HashOf> m_arrows;
};

}  // namespace

HMEM SUDIRegisterArrow(HMEM block) noexcept {
    if (!block) return nullptr;
    HMEM known = nullptr;
    try {
        known = ArrowRegistry::Instance().Add(block);
    } catch (const std::bad_alloc&) {
    }
    if (known != block) MEMMANFree(block);
    return known;
}
