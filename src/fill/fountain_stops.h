#pragma once

#include "host/color/context.h"
#include "host/color/fountcolor.h"

namespace VyrFOM {

/// The stops `factor` (0 to 1) of the way from `a` to `b`, one wherever either has one. Several stops at one
/// position (a hard edge) pair in order, the last of the shorter side with all that remain. False, `out`
/// undefined, when a pair of colours cannot be blended or only one side has stops.
bool BlendStops(const ColorContext& context, CLR_FOUNTCOLOR_ARRAY& out, const CLR_FOUNTCOLOR_ARRAY& a,
                const CLR_FOUNTCOLOR_ARRAY& b, double factor);

}  // namespace VyrFOM
