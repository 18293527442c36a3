#pragma once

#include <cstdint>
#include <vector>

#include "host/base/export.h"
#include "host/base/wstring.h"
#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/geometry/rect.h"
#include "host/gfx/outline.h"

/// One family of parallel hatch lines.
struct CGE_HATCHLINE {
    POINT origin;              ///< document units
    std::int32_t offset = 0;   ///< document units along the line
    std::int32_t spacing = 0;  ///< document units between neighbours
    std::int32_t angle = 0;    ///< millionths of a degree
    CGE_OUTLINE pen;
};

/// Bits of the low byte of the modification word.
enum CgeHatchFlags : std::uint32_t {
    kHatchScaleWithObject = 1,
    kHatchModified = 2,
    kHatchScaleLineWidths = 4
};

/// Parallel lines over a background. A value; copies are deep. An assignment that runs out of memory changes
/// nothing.
struct FOM_API CGE_HATCHFILL {
    std::vector<CGE_HATCHLINE> lines;  ///< first: the one member whose assignment can fail
    CLR_COLORSPEC background;
    CLR_SCREENSPEC screen;
    std::uint32_t modification = 0;  ///< CgeHatchFlags in the low byte
    double spacingMultiplier = 0;
    double thicknessMultiplier = 0;
    host::FixedName<32> library;
    host::FixedName<32> name;

    void Clear() noexcept { *this = CGE_HATCHFILL(); }
    /// New lines are default-constructed.
    void SetHatchArraySize(std::uint32_t count) { lines.resize(count); }
    std::uint32_t GetNumLines() const noexcept { return static_cast<std::uint32_t>(lines.size()); }
};
