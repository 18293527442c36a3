#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "host/base/export.h"
#include "host/base/hash.h"
#include "host/color/context.h"
#include "host/color/fountcolor.h"
#include "host/color/screenspec.h"
#include "host/geometry/matrix.h"
#include "host/geometry/rect.h"
#include "host/gfx/enums.h"

namespace host::detail {
template <class Record>
struct Fields;
}

/// A fountain (gradient) fill. A value; all copies are deep. An assignment that runs out of memory changes
/// nothing.
///
/// Geometry. The fountain lives in a unit space: a linear one runs along x from 0 to 1; the others run from
/// the point `origin` (the focal point, (0,0) is the centre) to the unit circle or square. `matrix` maps that
/// space to the object's bounding box, where (0,0) is its left top and (1,1) its right bottom corner, or to
/// document units when the units are FountainWorldCoordinates. After that the fountain turns by `angle`
/// (millionths of a degree, from the x axis towards the y axis) about the middle of the box and shifts by the
/// centre offsets (per cent of the box's width and height). `padding` (0 to 49 per cent) shortens the run at
/// both ends. A radial fountain that fills the box therefore has the matrix {0.5, 0, 0, 0.5, 0.5, 0.5}, not
/// the identity. The formulas stand in docs/formats/records.md.
class FOM_API CGE_FOUNTAINFILL {
public:
    static constexpr std::size_t kMaxColors = 65535;

    CGE_FOUNTAINFILL() = default;
    /// Linear, no colours, angle, offsets, padding and steps 0, blend rate method 0 at value 50, pad,
    /// isotropic, identity matrix, default screen: the state after construction.
    void Clear() noexcept;

    ClrFountainFillType GetFountainType() const noexcept { return m_type; }
    void SetFountainType(ClrFountainFillType type) noexcept { m_type = type; }
    std::int32_t GetAngle() const noexcept { return m_angle; }
    void SetAngle(std::int32_t microDegrees) noexcept { m_angle = microDegrees; }
    std::int32_t GetCenterOffsetX() const noexcept { return m_centerX; }
    std::int32_t GetCenterOffsetY() const noexcept { return m_centerY; }
    void SetCenterOffset(std::int32_t x, std::int32_t y) noexcept { m_centerX = x, m_centerY = y; }
    VECTOR2D GetOrigin() const noexcept { return m_origin; }
    void SetOrigin(VECTOR2D origin) noexcept { m_origin = origin; }
    const MATRIX& GetMatrix() const noexcept { return m_matrix; }
    void SetMatrix(const MATRIX& matrix) noexcept { m_matrix = matrix; }
    std::int16_t GetNumSteps() const noexcept { return m_steps; }
    void SetNumSteps(std::int16_t steps) noexcept { m_steps = steps; }
    std::int16_t GetPadding() const noexcept { return m_padding; }
    void SetPadding(std::int16_t padding) noexcept { m_padding = padding; }
    ClrBlendRateMethod GetBlendRateMethod() const noexcept { return m_rateMethod; }
    void SetBlendRateMethod(ClrBlendRateMethod method) noexcept { m_rateMethod = method; }
    std::int16_t GetBlendRateValue() const noexcept { return m_rateValue; }
    void SetBlendRateValue(std::int16_t value) noexcept { m_rateValue = value; }
    double GetBlendRateAcceleration() const noexcept { return m_acceleration; }
    void SetBlendRateAcceleration(double value) noexcept { m_acceleration = value; }
    CgeFountainFillSpreadMethod GetSpreadMethod() const noexcept { return m_spread; }
    void SetSpreadMethod(CgeFountainFillSpreadMethod method) noexcept { m_spread = method; }
    CgeFountainFillBlendMode GetLegacyBlendMode() const noexcept { return m_blendMode; }
    void SetLegacyBlendMode(CgeFountainFillBlendMode mode) noexcept { m_blendMode = mode; }
    bool GetAnisotropic() const noexcept { return m_anisotropic; }
    void SetAnisotropic(bool on) noexcept { m_anisotropic = on; }
    CgeFountainFillUnits GetUnits() const noexcept { return m_units; }
    void SetUnits(CgeFountainFillUnits units) noexcept { m_units = units; }
    const CLR_SCREENSPEC& GetScreen() const noexcept { return m_screen; }
    void SetScreen(const CLR_SCREENSPEC& screen) noexcept { m_screen = screen; }

    const CLR_FOUNTCOLOR_ARRAY& GetColors() const noexcept { return m_colors; }
    /// Takes over the stops; those after the first 65,535 are dropped.
    void SetColors(CLR_FOUNTCOLOR_ARRAY colors);
    /// At most 65,535.
    std::uint16_t GetNumColors() const noexcept { return static_cast<std::uint16_t>(m_colors.size()); }
    /// New stops are invalid colours at position 0.
    void SetNumColors(std::uint16_t count) { m_colors.resize(count); }
    /// Stop `index`; an index beyond the stops gives an invalid colour at position 0.
    const CLR_FOUNTCOLOR& GetColor(unsigned index) const noexcept;
    /// False, with nothing written, for an index beyond the stops.
    bool SetColor(unsigned index, const CLR_COLORSPEC& color) noexcept;
    bool SetColor(unsigned index, const CLR_FOUNTCOLOR& stop) noexcept;

    /// The whole geometry in one: from the unit space to the coordinates of `bounds` (document units as a
    /// rule), matrix first, then angle, then centre offsets. Edges may run either way. For renderers.
    MATRIX GetTotalMatrix(const VyrMath::BoundsT<double>& bounds) const noexcept;

    /// The total matrix taken apart: angle and skew in degrees, x and y scale, x and y offset, in this order.
    struct Parameters {
        double value[6];
    };
    Parameters GetParameters(const VyrMath::BoundsT<double>& bounds) const noexcept;
    /// Replaces matrix, angle and centre offsets so that the total matrix against the same bounds is the one
    /// that VyrMath::Compose makes of `parameters`. GetParameters gives them back, up to rounding, where both
    /// scales differ from 0 and they are as VyrMath::Decompose states them (it turns 270 degrees into -90 and
    /// a negative x scale into half a turn). Nothing changes when a parameter or the matrix is not finite, or
    /// when the matrix is relative to bounds without an area.
    void SetParameters(const Parameters& parameters, const VyrMath::BoundsT<double>& bounds) noexcept;

    /// A total order over every field, exact: whole numbers by value; doubles, colours and screens by their
    /// bytes. Negative, 0 or positive.
    int CompareTo(const CGE_FOUNTAINFILL& other) const noexcept;
    /// Reads the fields that CompareTo reads.
    void HashInto(host::Hasher& hasher) const noexcept;
    /// The raw word that the change mask compares last: the units.
    std::uint32_t GetThirteenthWord() const noexcept { return m_units; }

    /// At least one stop is not opaque.
    bool IsTransparent() const noexcept;
    /// The fountain of grays that draws this one's transparency: white opaque, black transparent.
    CGE_FOUNTAINFILL CreateFountainFillFromOpacity() const;
    /// This fountain with every colour as a proof in `proof` would show it: converted to the context's CMYK
    /// and back to the colour's own model. Ink colours, and colours that cannot be converted, stay as they
    /// are.
    CGE_FOUNTAINFILL CreateFountainFillUsingProofSettings(const ColorContext& proof) const;

private:
    friend struct host::detail::Fields<CGE_FOUNTAINFILL>;

    CLR_FOUNTCOLOR_ARRAY m_colors;  // first: the one member whose assignment can fail
    ClrFountainFillType m_type = FountainLinear;
    ClrBlendRateMethod m_rateMethod = BlendRateDefault;
    CgeFountainFillSpreadMethod m_spread = SpreadPad;
    CgeFountainFillBlendMode m_blendMode = BlendDirect;
    std::int16_t m_steps = 0;
    std::int16_t m_padding = 0;
    std::int16_t m_rateValue = 50;
    bool m_anisotropic = false;
    std::int32_t m_angle = 0;
    std::int32_t m_centerX = 0;
    std::int32_t m_centerY = 0;
    CgeFountainFillUnits m_units = FountainObjectBounds;
    VECTOR2D m_origin;
    MATRIX m_matrix;
    double m_acceleration = 0;
    CLR_SCREENSPEC m_screen;
};
