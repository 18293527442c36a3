#include "host/gfx/fountain_fill.h"

#include <algorithm>
#include <cmath>

#include "host/color/convert.h"

#include "gfx/fountain_fields.h"

namespace {

constexpr std::uint16_t kFullyTransparent = 255;

/// From the unit square to the bounds: (0,0) to the left top corner, (1,1) to the right bottom one.
MATRIX BoundsMatrix(const VyrMath::BoundsT<double>& bounds) noexcept {
    return {bounds.right - bounds.left, 0, 0, bounds.bottom - bounds.top, bounds.left, bounds.top};
}

/// The colour as `proof` prints it, in its own model; the colour itself where there is no way there or back.
CLR_COLORSPEC ProofColor(const ColorContext& proof, const CLR_COLORSPEC& color) {
    CLR_COLORSPEC inks;
    CLR_COLORSPEC shown;
    if (color.IsInk() || !WClrConvert::ConvertColorSpec(proof, inks, ClrModel::CMYK, color) ||
        !WClrConvert::ConvertColorSpec(proof, shown, color.GetModel(), inks))
        return color;
    return shown;
}

}  // namespace

void CGE_FOUNTAINFILL::Clear() noexcept {
    *this = CGE_FOUNTAINFILL();
}

void CGE_FOUNTAINFILL::SetColors(CLR_FOUNTCOLOR_ARRAY colors) {
    if (colors.size() > kMaxColors) colors.resize(kMaxColors);
    m_colors = std::move(colors);
}

const CLR_FOUNTCOLOR& CGE_FOUNTAINFILL::GetColor(unsigned index) const noexcept {
    static const CLR_FOUNTCOLOR none;
    return index < m_colors.size() ? m_colors[index] : none;
}

bool CGE_FOUNTAINFILL::SetColor(unsigned index, const CLR_COLORSPEC& color) noexcept {
    if (index >= m_colors.size()) return false;
    m_colors[index].color = color;
    return true;
}

bool CGE_FOUNTAINFILL::SetColor(unsigned index, const CLR_FOUNTCOLOR& stop) noexcept {
    if (index >= m_colors.size()) return false;
    m_colors[index] = stop;
    return true;
}

MATRIX CGE_FOUNTAINFILL::GetTotalMatrix(const VyrMath::BoundsT<double>& bounds) const noexcept {
    MATRIX total = m_units == FountainWorldCoordinates ? m_matrix : BoundsMatrix(bounds) * m_matrix;
    const double width = bounds.right - bounds.left;
    const double height = bounds.bottom - bounds.top;
    if (m_angle != 0) {
        const VECTOR2D middle{bounds.left + width / 2, bounds.top + height / 2};
        UTLTranslateMatrix(total, -middle.x, -middle.y);
        UTLRotateMatrix(total, m_angle);
        UTLTranslateMatrix(total, middle.x, middle.y);
    }
    UTLTranslateMatrix(total, width * m_centerX / 100, height * m_centerY / 100);
    return total;
}

CGE_FOUNTAINFILL::Parameters CGE_FOUNTAINFILL::GetParameters(
    const VyrMath::BoundsT<double>& bounds) const noexcept {
    const VyrMath::Decomposition d = VyrMath::Decompose(GetTotalMatrix(bounds));
    return {{d.angle, d.skew, d.xScale, d.yScale, d.xOffset, d.yOffset}};
}

void CGE_FOUNTAINFILL::SetParameters(const Parameters& parameters,
                                     const VyrMath::BoundsT<double>& bounds) noexcept {
    const double(&p)[6] = parameters.value;
    MATRIX matrix = VyrMath::Compose({p[0], p[1], p[2], p[3], p[4], p[5]});
    if (m_units != FountainWorldCoordinates) {
        const auto toUnit = Inverse(BoundsMatrix(bounds));
        if (!toUnit) return;
        matrix = *toUnit * matrix;
    }
    if (!IsFinite(matrix)) return;
    m_matrix = matrix;
    m_angle = m_centerX = m_centerY = 0;
}

int CGE_FOUNTAINFILL::CompareTo(const CGE_FOUNTAINFILL& other) const noexcept {
    return this == &other ? 0 : host::detail::FieldCompare{}(*this, other);
}

void CGE_FOUNTAINFILL::HashInto(host::Hasher& hasher) const noexcept {
    host::detail::FieldHash hash(hasher);
    hash(*this);
}

bool CGE_FOUNTAINFILL::IsTransparent() const noexcept {
    return std::any_of(m_colors.begin(), m_colors.end(),
                       [](const CLR_FOUNTCOLOR& stop) { return stop.transparency != 0; });
}

CGE_FOUNTAINFILL CGE_FOUNTAINFILL::CreateFountainFillFromOpacity() const {
    CGE_FOUNTAINFILL result(*this);
    for (CLR_FOUNTCOLOR& stop : result.m_colors) {
        const int transparency = std::min(stop.transparency, kFullyTransparent);
        stop.color = CLR_COLORSPEC();
        stop.color.MakeGray(kFullyTransparent - transparency);
        stop.transparency = 0;
    }
    return result;
}

CGE_FOUNTAINFILL CGE_FOUNTAINFILL::CreateFountainFillUsingProofSettings(const ColorContext& proof) const {
    CGE_FOUNTAINFILL result(*this);
    for (CLR_FOUNTCOLOR& stop : result.m_colors)
        stop.color = ProofColor(proof, stop.color);
    return result;
}
