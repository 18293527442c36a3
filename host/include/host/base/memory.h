#pragma once

#include <cstddef>
#include <cstdint>

#include "host/base/export.h"

/// Movable memory: blocks reached through a handle. Safe from any thread as long as one block is used by one
/// thread at a time. A null handle is accepted everywhere and has size 0.
struct HMEM__;
using HMEM = HMEM__*;

/// A block of `size` bytes at an address that is a multiple of 16, cleared when `clear` is set. Null when
/// memory runs out and for more than 256 GiB.
FOM_API HMEM MEMMANAlloc(std::size_t size, bool clear) noexcept;
/// The block's bytes until the matching unlock; null for a null handle. Locks nest and do not keep a block
/// from being freed.
FOM_API void* MEMMANLock(HMEM block) noexcept;
FOM_API void MEMMANUnlock(HMEM block) noexcept;
FOM_API std::size_t MEMMANGetSize(HMEM block) noexcept;
/// A new block with the same bytes; null for null or when memory runs out.
FOM_API HMEM MEMMANDuplicate(HMEM block) noexcept;
FOM_API void MEMMANFree(HMEM block) noexcept;

namespace host {
/// Stands in records for a block that their stored form refers to and that has not been read yet: one empty
/// block for the whole process. Freeing it does nothing; it does not count as alive.
FOM_API HMEM UnresolvedBlock() noexcept;
/// Blocks alive now, for leak checks.
FOM_API std::size_t LiveMemoryBlocks() noexcept;
}  // namespace host
