#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/geometry/rect.h"

/// Kinds of steps. They are stored: a number names its kind for good.
enum CgeArrowStep : std::uint8_t {
    kArrowMove = 0,   ///< begins a sub-path
    kArrowLine = 1,   ///< a straight line
    kArrowCurve = 2,  ///< a cubic curve
    kArrowClose = 3   ///< a straight line back to the sub-path's beginning, which ends it
};

/// One step of an arrowhead's outline, from where the step before ended. Points that the kind does not have
/// stay (0, 0).
struct CGE_ARROWSTEP {
    CgeArrowStep kind = kArrowMove;
    POINT to;                  ///< of all but kArrowClose
    POINT control1, control2;  ///< of kArrowCurve
    friend bool operator==(const CGE_ARROWSTEP&, const CGE_ARROWSTEP&) = default;
};

/// The shape of an arrowhead, in thousandths of the line's width: the outline's line ends at (0, 0), x runs
/// on in its direction, y to its left. Closed sub-paths are areas, filled together by the even-odd rule, so
/// that one inside another is a hole; an open sub-path is drawn as wide as the line itself, its ends and
/// corners round. CGE_ARROWATTRIB says how it is placed. The default has nothing to draw.
struct FOM_API CGE_ARROWHEAD {
    std::vector<CGE_ARROWSTEP> steps;
    /// The x to which the line is drawn, cut straight: 0 is its end, a negative one leaves out its last part,
    /// so that it does not show beside a point or through a hole.
    std::int32_t lineEnd = 0;

    /// Whether each sub-path begins with a move.
    bool IsWellFormed() const noexcept;
    /// A new block in the form of docs/formats/arrowheads.md, which the caller frees; null when memory runs
    /// out. Requires IsWellFormed.
    HMEM ToBlock() const noexcept;
    /// Empty for null and for what is not exactly one well-formed arrowhead of a known version. Any bytes may
    /// be given. Throws bad_alloc.
    static std::optional<CGE_ARROWHEAD> FromBlock(HMEM block);

    friend bool operator==(const CGE_ARROWHEAD&, const CGE_ARROWHEAD&) = default;
};

/// The one block that stands for all arrowheads of these bytes as long as the process lives, so that records
/// may copy its handle freely. Takes over `block`: it is freed when an equal one is known already, and must
/// neither be changed nor freed by anyone afterwards. A registered block is returned as it is. Null for null
/// and, `block` freed, when memory runs out. Safe from any thread.
FOM_API HMEM SUDIRegisterArrow(HMEM block) noexcept;
