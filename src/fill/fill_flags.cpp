#include "fom/fill_flags.h"

#include <bit>
#include <cmath>
#include <limits>

const int WFillFlags::postscriptParams = 5;
const int WFillFlags::textureParams = 12;

void WFillFlags::setParam(unsigned bit, int on) noexcept {
    const std::uint32_t mask = std::uint32_t{1} << (bit % 32);
    m_bits = on != 0 ? m_bits | mask : m_bits & ~mask;
}

void WFillFlags::Set(CgeFillType kind, bool yes) noexcept {
    switch (kind) {
        case FillUniform:
        case FillFountain:
        case FillPostScript:
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
        case FillColorBitmap:
        case FillVector:
        case FillTexture:
        case FillHatch:
            return yes ? on() : off();
        default:
            return;
    }
}

namespace {

/// Further apart than the machine epsilon. A value that is not a number differs from all but itself, bit by
/// bit.
bool Differ(double a, double b) noexcept {
    if (std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b)) return false;
    return !(std::fabs(a - b) <= std::numeric_limits<double>::epsilon());
}

/// The bits of the six geometry parameters, in their order.
constexpr unsigned kGeometryBits[6] = {3, 14, 12, 13, 4, 5};

void CompareFirstStops(WFillFlags& flags, const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b) noexcept {
    if (a.GetNumColors() < 2 || b.GetNumColors() < 2) return;
    const CLR_FOUNTCOLOR& first = a.GetColor(0);
    const CLR_FOUNTCOLOR& second = b.GetColor(0);
    flags.setParam(7, first.transparency != second.transparency);
    flags.setParam(9, Differ(first.position / 100.0, second.position / 100.0));
}

void CompareGeometry(WFillFlags& flags, const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b) noexcept {
    const CGE_FOUNTAINFILL::Parameters first = a.GetParameters(VyrMath::IdentityBounds);
    const CGE_FOUNTAINFILL::Parameters second = b.GetParameters(VyrMath::IdentityBounds);
    for (unsigned i = 0; i < 6; ++i)
        flags.setParam(kGeometryBits[i], Differ(first.value[i], second.value[i]));
}

}  // namespace

WFillFlags CompareFountainFills(const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b) noexcept {
    WFillFlags flags;
    flags.setParam(0, a.GetFountainType() != b.GetFountainType());
    flags.setParam(1, a.GetScreen() != b.GetScreen());
    flags.setParam(6, a.GetNumSteps() != b.GetNumSteps());
    flags.setParam(8, a.GetBlendRateMethod() != b.GetBlendRateMethod());
    flags.setParam(10, a.GetNumColors() != b.GetNumColors());
    flags.setParam(11, a.GetColors() != b.GetColors());
    flags.setParam(15, a.GetAnisotropic() != b.GetAnisotropic());
    flags.setParam(16, a.GetSpreadMethod() != b.GetSpreadMethod());
    flags.setParam(17, Differ(a.GetBlendRateAcceleration(), b.GetBlendRateAcceleration()));
    flags.setParam(18, a.GetThirteenthWord() != b.GetThirteenthWord());
    CompareFirstStops(flags, a, b);
    CompareGeometry(flags, a, b);
    flags.ok();
    return flags;
}
