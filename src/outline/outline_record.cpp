#include "fom/outline_record.h"

#include <algorithm>
#include <cmath>

#include "host/services/calls.h"

#include "fill/rounding.h"
#include "outline/find_wideline.h"

namespace {

constexpr int kMinPatternWidth = 1;
constexpr int kDefaultPatternWidth = 762;
constexpr double kMaxPatternWidthInches = 2324.644;
constexpr double kMinPatternLength = 52916.66666666667;  // 15 points

bool IsDashed(const CGE_OUTLINE& outline) noexcept {
    return (outline.type & 15) == OutlineDotDash && outline.endCaps != 0 && outline.dotDash.count != 0 &&
           outline.width != 0;
}

}  // namespace

int OUTCompareOutlines(const CGE_OUTLINE* a, const CGE_OUTLINE* b, bool skipColorBytes) noexcept {
    if (!a || !b) return (a != nullptr) - (b != nullptr);
    return CGE_OUTLINE::CompareTo(*a, *b, skipColorBytes);
}

int OUTHasWideline(const CGE_OUTLINE* outline) noexcept {
    return outline && VyrFOM::FindWideline(*outline) ? 1 : 0;
}

int OUTGetMinPatternWidth() noexcept {
    return kMinPatternWidth;
}

int OUTGetDefaultPatternWidth() noexcept {
    return kDefaultPatternWidth;
}

int OUTGetMaxPatternWidth() {
    return VyrFOM::RoundTo<int>(
        std::trunc(UNITConvertUnitToBase(host::kUnitInch, 0.0, kMaxPatternWidthInches)));
}

double OUTEstimatePatternLength(const CGE_OUTLINE* outline) noexcept {
    if (!outline || !IsDashed(*outline)) return kMinPatternLength;
    const double dots = static_cast<double>(CGEDotDashDotCount(outline->dotDash));
    return std::max(kMinPatternLength, dots * outline->width);
}
