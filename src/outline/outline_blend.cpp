#include "fom/outline_blend.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "fill/between.h"
#include "fill/color_blend.h"

namespace {

using VyrFOM::Between;
using VyrFOM::RoundBetween;

bool StrokesNothing(const CGE_OUTLINE& outline) noexcept {
    return (outline.type & 15) == OutlineNone;
}

CGE_OUTLINE WithoutWidth(CGE_OUTLINE outline) {
    CGE_VARIABLEATTRIB variable = outline.GetVariableAttribute();
    variable.Scale(0);
    outline.SetVariableAttribute(std::move(variable));
    outline.width = 0;
    return outline;
}

/// `end`, or what stands for it on the way to `other`.
CGE_OUTLINE AsStroke(const CGE_OUTLINE& end, const CGE_OUTLINE& other) {
    return StrokesNothing(end) && !StrokesNothing(other) ? WithoutWidth(other) : end;
}

void BlendDashes(CGE_DOTDASHSPEC& out, const CGE_DOTDASHSPEC& a, const CGE_DOTDASHSPEC& b,
                 double f) noexcept {
    if (a.count != b.count) return;
    for (std::size_t i = 0; i < out.Used(); ++i)
        out.element[i] = RoundBetween(a.element[i], b.element[i], f);
}

void BlendVariableWidths(CGE_OUTLINE& out, const CGE_VARIABLEATTRIB& a, const CGE_VARIABLEATTRIB& b,
                         double f) {
    if (a.points.size() != b.points.size()) return;
    CGE_VARIABLEATTRIB blended = a;
    for (std::size_t i = 0; i < a.points.size(); ++i)
        blended.points[i] = {Between(a.points[i].position, b.points[i].position, f),
                             Between(a.points[i].left, b.points[i].left, f),
                             Between(a.points[i].right, b.points[i].right, f)};
    out.SetVariableAttribute(std::move(blended));
}

/// `out` is a copy of the nearer end.
void BlendNumbers(CGE_OUTLINE& out, const CGE_OUTLINE& a, const CGE_OUTLINE& b, double f) {
    out.width = RoundBetween(a.width, b.width, f);
    out.nibStretch = RoundBetween(a.nibStretch, b.nibStretch, f);
    out.nibAngle = RoundBetween(a.nibAngle, b.nibAngle, f);
    out.dotLength = RoundBetween(a.dotLength, b.dotLength, f);
    out.SetMiterLimit(RoundBetween(a.GetMiterLimit(), b.GetMiterLimit(), f));
    out.matrix = Between(a.matrix, b.matrix, f);
    out.SetProjectMatrix(Between(a.GetProjectMatrix(), b.GetProjectMatrix(), f));
    BlendDashes(out.dotDash, a.dotDash, b.dotDash, f);
    BlendVariableWidths(out, a.GetVariableAttribute(), b.GetVariableAttribute(), f);
}

}  // namespace

bool BlendOutline(const ColorContext& context, CGE_OUTLINE& out, const CGE_OUTLINE& a, const CGE_OUTLINE& b,
                  double factor) {
    if (std::isnan(factor)) return false;
    const double f = std::clamp(factor, 0.0, 1.0);
    const CGE_OUTLINE from = AsStroke(a, b), to = AsStroke(b, a);
    CLR_COLORSPEC color;
    if (!VyrFOM::BlendColor(context, color, from.color, to.color, f)) return false;
    CGE_OUTLINE blended = f <= 0 ? a : f >= 1 ? b : f < 0.5 ? from : to;
    if (f > 0 && f < 1) {
        BlendNumbers(blended, from, to, f);
        blended.color = color;
    }
    blended.guid = out.guid;
    out = std::move(blended);
    return true;
}
