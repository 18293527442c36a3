#pragma once

#include <cstdint>

namespace VyrFOM {

/// The tile edge that new pattern fills get when the ruler shows `unit`, in document units.
std::int32_t GetDefaultTileSize(int unit);

}  // namespace VyrFOM
