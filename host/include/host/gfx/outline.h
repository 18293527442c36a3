#pragma once

#include <array>
#include <cstdint>

#include "host/base/export.h"
#include "host/base/guid.h"
#include "host/base/hash.h"
#include "host/base/memory.h"
#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/geometry/matrix.h"

namespace host::detail {
template <class Record>
struct Fields;
}

/// Dash pattern: alternating dash and gap lengths, in units of the dot length. Only the first `count`
/// elements mean anything; a count above 10 reads as 10.
struct CGE_DOTDASHSPEC {
    std::uint16_t count = 0;
    std::array<std::int32_t, 10> element{};
};

/// Pen kinds in the low four bits of CGE_OUTLINE::type; one bit each.
enum CgeOutlineType : std::uint16_t {
    OutlineNone = 1,
    OutlineSolid = 2,
    OutlineDotDash = 4,
    OutlineWideline = 8
};

/// What a contour is stroked with. A value; copies are deep.
class FOM_API CGE_OUTLINE {
public:
    std::uint16_t type = OutlineNone;
    std::uint16_t endCaps = 0;        ///< 0 butt, 1 round, 2 square
    std::uint16_t join = 0;           ///< 0 miter, 1 round, 2 bevel
    std::uint16_t justification = 0;  ///< 0 centred on the path
    std::int32_t width = 0;           ///< document units
    std::int16_t nibStretch = 100;    ///< per cent, 100 is circular
    std::int32_t nibAngle = 0;        ///< millionths of a degree
    MATRIX matrix;
    CLR_COLORSPEC color;
    CLR_SCREENSPEC screen;
    std::uint32_t overprint = 0;
    CGE_DOTDASHSPEC dotDash;
    HMEM leftArrow = nullptr;   ///< arrowhead of the start; not owned
    HMEM rightArrow = nullptr;  ///< arrowhead of the end; not owned
    std::uint32_t dotLength = 0;
    VyrUtils::Guid guid;  ///< never takes part in comparison

    /// Kind 1, everything else as a default-constructed record; the GUID stays.
    void SetToNoOutline() noexcept;
    std::int32_t GetMiterLimit() const noexcept { return m_miterLimit; }
    void SetMiterLimit(std::int32_t limit) noexcept { m_miterLimit = limit; }

    /// A total exact order over every field but the GUID: whole numbers by value; doubles and the screen by
    /// their bytes; the colour as WClrConvert::CompareColors, then its identity block; arrowheads by the
    /// size, then the bytes of their blocks, none first; of the dash pattern the elements that count.
    /// Negative, 0 or positive. With `skipColorBytes` the identity block counts only where CompareColors
    /// reads it (named palettes).
    static int CompareTo(const CGE_OUTLINE& a, const CGE_OUTLINE& b, bool skipColorBytes) noexcept;
    /// Reads what CompareTo(…, false) reads.
    void HashInto(host::Hasher& hasher) const noexcept;

private:
    friend struct host::detail::Fields<CGE_OUTLINE>;

    std::int32_t m_miterLimit = 0;
};
