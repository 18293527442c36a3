#include "fom/round_nib.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "fom/document_units.h"
#include "fom/pen_width.h"

namespace command {
namespace {

/// A pen of that width is fitted to the transform times the real width, so that the width is rounded once.
constexpr std::int32_t kReferenceWidth = 1 << 24;
constexpr double kThickest = 1e12;
/// A stretch that rounds to 0 would count as a round nib.
constexpr double kFlat = 0.005;

}  // namespace

Stretches StretchesOf(const MATRIX& m) noexcept {
    const double sum = std::hypot(m.a + m.d, m.b - m.c) / 2;
    const double difference = std::hypot(m.a - m.d, m.b + m.c) / 2;
    return {sum + difference, std::abs(sum - difference)};
}

std::optional<MATRIX> FindNibTransform(bool nonScaling, const svg::Matrix& transform) noexcept {
    if (nonScaling) return MATRIX();
    const MATRIX m{transform.a, transform.b, transform.c, transform.d, 0, 0};
    if (StretchesOf(m).most <= kThickest) return m;
    return std::nullopt;
}

void FitRoundNib(CGE_OUTLINE& pen, double width, const MATRIX& transform) {
    pen.width = kReferenceWidth;
    MATRIX scaled = transform;
    const double scale = (width > 0 ? std::min(width, kThickest) : 0) * kUnitsPerPixel / kReferenceWidth;
    UTLStretchMatrix(scaled, scale, scale);
    OUTPreAdjustPenWidth(pen, &scaled);
    pen.width = std::max(pen.width, 1);
    const Stretches stretches = StretchesOf(transform);
    if (stretches.least < stretches.most * kFlat) {
        pen.nibStretch = 1;
    } else if (pen.nibStretch == 100) {
        pen.nibAngle = 0;
    }
}

}  // namespace command
