#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>

#include "host/base/export.h"
#include "host/base/guid.h"
#include "host/base/hash.h"
#include "host/base/memory.h"
#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/geometry/matrix.h"
#include "host/gfx/arrow_attribute.h"
#include "host/gfx/dot_dash.h"
#include "host/gfx/shared_record.h"
#include "host/gfx/variable_attribute.h"
#include "host/gfx/wideline.h"

namespace udi {
class InputArchive;
class OutputArchive;
}  // namespace udi

namespace host::detail {
template <class Record>
struct Fields;
struct OutlineExtras;
}  // namespace host::detail

/// Pen kinds in the low four bits of CGE_OUTLINE::type; one bit each. "Of kind n" compares the four bits.
enum CgeOutlineType : std::uint16_t {
    OutlineNone = 1,
    OutlineSolid = 2,
    OutlineDotDash = 4,
    OutlineWideline = 8  ///< strokes with the wideline object, see GetWideline
};

/// What a contour is stroked with.
///
/// A value: no copy sees what is written to another. Copying, moving and SetToNoOutline cannot fail; a setter
/// that runs out of memory changes nothing. Rare attributes stand outside the record and take memory only
/// when they are not the default. A record is used by one thread at a time; const use is safe from several.
class FOM_API CGE_OUTLINE {
public:
    static constexpr std::int16_t kRoundNib = 100;

    std::uint16_t type = OutlineNone;
    std::uint16_t endCaps = 0;            ///< 0 butt, 1 round, 2 square
    std::uint16_t join = 0;               ///< 0 miter, 1 round, 2 bevel
    std::uint16_t justification = 0;      ///< 0 centred on the path
    std::int32_t width = 0;               ///< document units
    std::int16_t nibStretch = kRoundNib;  ///< per cent
    std::int32_t nibAngle = 0;            ///< millionths of a degree
    MATRIX matrix;
    CLR_COLORSPEC color;
    CLR_SCREENSPEC screen;
    std::uint32_t overprint = 0;
    CGE_DOTDASHSPEC dotDash;
    HMEM leftArrow = nullptr;     ///< arrowhead of the start; not owned
    HMEM rightArrow = nullptr;    ///< arrowhead of the end; not owned
    std::uint32_t dotLength = 0;  ///< document units
    VyrUtils::Guid guid;          ///< never takes part in comparison

    /// The low four bits of the type; the higher ones stay.
    void SetKind(CgeOutlineType kind) noexcept {
        type = static_cast<std::uint16_t>((type & 0xFFF0u) | (kind & 0xFu));
    }
    /// Kind 1, everything else as a default-constructed record; the GUID stays.
    void SetToNoOutline() noexcept;
    /// Kind 8 with a copy of `wideline`; the higher bits of the type and everything else stay.
    void SetToWideline(const CGE_WIDELINE& wideline);

    /// The smallest angle between two segments that still gives a pointed miter, millionths of a degree.
    std::int32_t GetMiterLimit() const noexcept { return m_miterLimit; }
    void SetMiterLimit(std::int32_t limit) noexcept { m_miterLimit = limit; }
    CGE_DASH_ADJUST GetDashAdjust() const noexcept { return m_dashAdjust; }
    void SetDashAdjust(CGE_DASH_ADJUST adjust) noexcept { m_dashAdjust = adjust; }

    /// References and pointers that the getters below return are good until the record is next written to.

    /// The pattern object, whatever the kind; null for none. To change it, set a changed copy.
    const CGE_WIDELINE* GetWideline() const noexcept;
    /// Takes the object, or null for none; the type stays.
    void SetWideline(std::unique_ptr<CGE_WIDELINE> wideline);
    /// The profile of a stroke of variable width.
    const CGE_VARIABLEATTRIB& GetVariableAttribute() const noexcept;
    void SetVariableAttribute(CGE_VARIABLEATTRIB attribute);
    const CGE_ARROWATTRIB& GetLeftArrowAttributes() const noexcept;
    void SetLeftArrowAttributes(const CGE_ARROWATTRIB& attributes);
    const CGE_ARROWATTRIB& GetRightArrowAttributes() const noexcept;
    void SetRightArrowAttributes(const CGE_ARROWATTRIB& attributes);
    /// Maps the plane in which the stroke is drawn to the page.
    const MATRIX& GetProjectMatrix() const noexcept;
    void SetProjectMatrix(const MATRIX& matrix);

    /// Appends the stored form (docs/formats/bodies.md); of an arrowhead the number of its block. Throws
    /// bad_alloc, and then nothing was appended.
    void SaveIn(udi::OutputArchive& archive) const;
    /// Becomes what the archive's bytes describe. False when they describe no outline: nothing in them is
    /// trusted. Arrowheads that follow in the stream read as host::UnresolvedBlock(): whoever reads them puts
    /// them in. Throws bad_alloc. In both cases this is as default-constructed.
    bool LoadFrom(udi::InputArchive& archive);

    /// A total exact order over every field but the GUID: whole numbers by value; doubles and the screen by
    /// their bytes; the colour as WClrConvert::CompareColors, then its identity block; arrowheads by the
    /// size, then the bytes of their blocks, none first; of the dash pattern the elements that count; the
    /// wideline object, none first, as CGE_WIDELINE::Compare. Negative, 0 or positive. With `skipColorBytes`
    /// the identity block counts only where CompareColors reads it (named palettes).
    static int CompareTo(const CGE_OUTLINE& a, const CGE_OUTLINE& b, bool skipColorBytes) noexcept;
    /// Reads what CompareTo(…, false) reads.
    void HashInto(host::Hasher& hasher) const noexcept;

private:
    friend struct host::detail::Fields<CGE_OUTLINE>;

    std::int32_t m_miterLimit = 0;
    CGE_DASH_ADJUST m_dashAdjust = DashAdjustNone;
    host::SharedRecord<host::detail::OutlineExtras> m_extras;
};
// Most of what a plain pooled outline costs.
static_assert(sizeof(CGE_OUTLINE) <= 240);
static_assert(std::is_nothrow_copy_constructible_v<CGE_OUTLINE> &&
              std::is_nothrow_copy_assignable_v<CGE_OUTLINE>);
