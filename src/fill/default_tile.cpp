#include "fill/default_tile.h"

#include <limits>

#include "host/services/services.h"
#include "host/services/unit_value.h"

namespace {

std::int32_t Saturate(double value) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    if (value >= Limits::max()) return Limits::max();
    if (value <= Limits::min()) return Limits::min();
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

}  // namespace

std::int32_t VyrFOM::GetDefaultTileSize(int unit) {
    static const WSmartUnitValue size({{host::kUnitInch, 4.0},
                                       {host::kUnitMillimetre, 100.0},
                                       {host::kUnitTechnicalMillimetre, 100.0},
                                       {host::kUnitPixel, 1200.0}});
    return Saturate(size.GetValueForUnitBase(unit, 1));
}
