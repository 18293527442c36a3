#pragma once

#include <cstdint>

namespace command {

/// Tells how many bytes of heap the calling thread holds.
using HeapGauge = std::int64_t (*)();

}  // namespace command
