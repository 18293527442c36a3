#pragma once

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/gfx/fill.h"

/// The fill `factor` (held within 0 and 1; 0 is `a`, 1 is `b`) of the way from `a` to `b`. Numbers blend in a
/// straight line and round half away from zero; what is no number comes from the nearer end, from `b` at the
/// middle. False, `out` untouched, when the two cannot be blended and for a factor that is no number. `out`
/// may be `a` or `b`. Throws bad_alloc, `out` untouched. Main thread only.

/// Type, spread and units must agree. Stops are matched by position: where one fountain has a stop, the
/// other's colour there is taken. Colours blend in the model of `a`'s colour, hues the shorter way; `b`'s is
/// converted. Inks blend only with themselves, by their densities.
FOM_API bool BlendFountainFill(const ColorContext& context, CGE_FOUNTAINFILL& out, const CGE_FOUNTAINFILL& a,
                               const CGE_FOUNTAINFILL& b, double factor);
/// Only textures of the same library and name (without regard to case) blend. Tiling, boxes, resolution and
/// the parameters of the texture engine blend; parameters that it cannot read come from the nearer end. An
/// image that was rendered is kept only where it still shows the texture.
FOM_API bool BlendTextureFill(CGE_TEXTUREFILL& out, const CGE_TEXTUREFILL& a, const CGE_TEXTUREFILL& b,
                              double factor);
