#pragma once

#include "host/color/colorspec.h"
#include "host/color/context.h"

namespace VyrFOM {

/// The colour `factor` (0 to 1) of the way from `a` to `b`, in the model of `a`. Equal colours are kept as
/// they are; others give a plain colour, hues going the shorter way round. Inks blend only with themselves,
/// by their densities. False, `out` untouched, when there is no such colour. `out` may be `a` or `b`.
bool BlendColor(const ColorContext& context, CLR_COLORSPEC& out, const CLR_COLORSPEC& a,
                const CLR_COLORSPEC& b, double factor);

}  // namespace VyrFOM
