#include "fom/arrow_shape.h"

#include <utility>

namespace command {

std::optional<Arrow> ReadArrow(HMEM block, const CGE_ARROWATTRIB& place) {
    std::optional<CGE_ARROWHEAD> head = CGE_ARROWHEAD::FromBlock(block);
    if (!head) return std::nullopt;
    return Arrow{*std::move(head), place};
}

MATRIX PlaceArrow(const CGE_ARROWATTRIB& place) noexcept {
    const double x = (place.flags & kArrowMirrorAlong) != 0 ? -1 : 1;
    const double y = (place.flags & kArrowMirrorAcross) != 0 ? -1 : 1;
    MATRIX m;
    UTLStretchMatrix(m, x * place.xScale / 100, y * place.yScale / 100);
    UTLRotateMatrix(m, place.rotation);
    UTLTranslateMatrix(m, place.xOffset, place.yOffset);
    return m;
}

}  // namespace command
