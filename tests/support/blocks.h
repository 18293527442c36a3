#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <span>
#include <string_view>
#include <vector>

#include "host/base/memory.h"

namespace testing_support {

/// A memory block of these bytes, which the caller owns. Throws bad_alloc.
inline HMEM BlockOf(std::span<const std::uint8_t> bytes) {
    const HMEM block = MEMMANAlloc(bytes.size(), false);
    if (!block) throw std::bad_alloc();
    std::ranges::copy(bytes, static_cast<std::uint8_t*>(MEMMANLock(block)));
    MEMMANUnlock(block);
    return block;
}
inline HMEM BlockOf(std::string_view bytes) {
    return BlockOf({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

/// A copy of the block's bytes.
inline std::vector<std::uint8_t> BytesOf(HMEM block) {
    const auto* const data = static_cast<const std::uint8_t*>(MEMMANLock(block));
    std::vector<std::uint8_t> bytes(data, data + MEMMANGetSize(block));
    MEMMANUnlock(block);
    return bytes;
}

}  // namespace testing_support
