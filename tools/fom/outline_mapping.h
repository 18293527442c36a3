#pragma once

#include "host/gfx/outline.h"

#include "fom/arrowhead_mapping.h"

#include "svg/matrix.h"
#include "svg/omissions.h"
#include "svg/stroke.h"

namespace command {

/// Makes the outlines of the strokes of one drawing.
class OutlineMapper {
public:
    /// The outline that draws a stroke; `transform` maps the shape to the page. Its width is that on the page
    /// in document units, its nib what the transform makes of a round one, without an angle where it stays
    /// round. Dashes are scaled like the width. The colour stands for other paints: of a gradient its first
    /// stop's, for a pattern black. What an outline cannot say beside that is counted. Requires a paint.
    CGE_OUTLINE Map(const svg::Stroke& stroke, const svg::Matrix& transform, svg::Omissions& omissions);

private:
    void SetArrowheads(CGE_OUTLINE& pen, const svg::Stroke& stroke, svg::Omissions& omissions);

    ArrowheadCache m_arrowheads;
};

}  // namespace command
