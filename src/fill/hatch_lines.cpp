#include "fom/hatch_lines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

#include "fom/pen_width.h"

#include "fill/rounding.h"

// The formulas stand in docs/hatch_lines.md.

namespace VyrFOM {
namespace {

constexpr double kMicroDegreesPerRadian = 180e6 / std::numbers::pi;
constexpr double kFullTurn = 360e6;
// Within these every product below stays a normal number.
constexpr double kMaxElement = 1e100;
constexpr double kMinDeterminant = 1e-200;

bool IsUsable(const MATRIX& m) noexcept {
    const double elements[] = {m.a, m.b, m.c, m.d, m.tx, m.ty};
    const bool inRange = std::all_of(std::begin(elements), std::end(elements),
                                     [](double e) { return std::abs(e) <= kMaxElement; });
    return inRange && std::abs(Determinant(m)) >= kMinDeterminant;
}

bool MovesOnly(const MATRIX& m) noexcept {
    return m.a == 1 && m.b == 0 && m.c == 0 && m.d == 1;
}

double Dot(VECTOR2D a, VECTOR2D b) noexcept {
    return a.x * b.x + a.y * b.y;
}

double Cross(VECTOR2D a, VECTOR2D b) noexcept {
    return a.x * b.y - a.y * b.x;
}

VECTOR2D LeftOf(VECTOR2D v) noexcept {
    return {-v.y, v.x};
}

/// The same family of lines whichever way one steps through it: the step is kept on the side where it was.
VECTOR2D OnSideOf(std::int32_t spacing, VECTOR2D step) noexcept {
    return (step.y < 0) != (spacing < 0) ? VECTOR2D{-step.x, -step.y} : step;
}

void TransformLine(CGE_HATCHLINE& line, const MATRIX& m) noexcept {
    const VECTOR2D origin = TransformPoint(m, {double(line.origin.x), double(line.origin.y)});
    line.origin = {RoundTo<std::int32_t>(origin.x), RoundTo<std::int32_t>(origin.y)};
    if (MovesOnly(m)) return;

    const double radians = line.angle / kMicroDegreesPerRadian;
    const VECTOR2D along{std::cos(radians), std::sin(radians)};
    const VECTOR2D across = LeftOf(along);
    const VECTOR2D step{line.offset * along.x + line.spacing * across.x,
                        line.offset * along.y + line.spacing * across.y};

    const VECTOR2D mapped = TransformVector(m, along);
    const double length = std::hypot(mapped.x, mapped.y);
    const VECTOR2D newAlong{mapped.x / length, mapped.y / length};
    const VECTOR2D newStep = TransformVector(m, step);
    const VECTOR2D next = OnSideOf(line.spacing, {Dot(newStep, newAlong), Cross(newAlong, newStep)});

    const double turn = std::atan2(Cross(along, newAlong), Dot(along, newAlong)) * kMicroDegreesPerRadian;
    line.offset = RoundTo<std::int32_t>(next.x);
    line.spacing = RoundTo<std::int32_t>(next.y);
    line.angle = RoundTo<std::int32_t>(std::fmod(line.angle + turn, kFullTurn));
}

// Copies are fitted, so that running out of memory half-way leaves the hatch as it was.
template <class Fit>
void FitPens(CGE_HATCHFILL& hatch, const MATRIX& m, Fit fit) {
    if (!IsUsable(m)) return;
    std::vector<CGE_OUTLINE> pens;
    pens.reserve(hatch.lines.size());
    for (const CGE_HATCHLINE& line : hatch.lines)
        fit(pens.emplace_back(line.pen), &m);
    for (std::size_t i = 0; i < pens.size(); ++i)
        hatch.lines[i].pen = std::move(pens[i]);
}

}  // namespace

void TransformHatchLines(CGE_HATCHFILL& hatch, const MATRIX& m) {
    if (!IsUsable(m)) return;
    for (CGE_HATCHLINE& line : hatch.lines)
        TransformLine(line, m);
}

void PreAdjustHatchPenWidths(CGE_HATCHFILL& hatch, const MATRIX& m) {
    FitPens(hatch, m, OUTPreAdjustPenWidth);
}

void PostAdjustHatchPenWidths(CGE_HATCHFILL& hatch, const MATRIX& m) {
    FitPens(hatch, m, OUTPostAdjustPenWidth);
}

void ClearHatchLineTransfos(CGE_HATCHFILL& hatch) {
    for (CGE_HATCHLINE& line : hatch.lines)
        line.pen.matrix = VyrMath::IdentityMatrix;
}

}  // namespace VyrFOM
