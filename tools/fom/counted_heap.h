#pragma once

#include <cstdint>

namespace command {

/// Bytes that the calling thread holds of what operator new gave, as the allocator rounds them; a block that
/// is freed by another thread counts for that one. Only in the command itself, whose operator new counts.
std::int64_t CountedHeap() noexcept;

}  // namespace command
