#include <cmath>
#include <cstddef>

#include "fom/pen_text.h"
#include "fom/swatch_label.h"

namespace command {
namespace {

constexpr double kTrueSize = 0.01;

std::string DashText(const CGE_OUTLINE& pen) {
    std::string text;
    if ((pen.type & 15) != OutlineDotDash) return text;
    for (std::size_t i = 0; i < pen.dotDash.Used(); ++i)
        text += (i == 0 ? ", " : " ") + std::to_string(pen.dotDash.element[i]);
    return text;
}

}  // namespace

SwatchLabel LabelOf(const CGE_OUTLINE& pen, double enlargement) {
    SwatchLabel label{PointsText(pen.width), ColorText(pen.color)};
    if (pen.nibStretch != 100) label.name += ", nib " + std::to_string(pen.nibStretch) + " %";
    label.name += DashText(pen);
    // There is no room for more; the colour is seen.
    if ((pen.type & 15) == OutlineDotDash) label.detail = "dot " + PointsText(pen.dotLength);
    if (std::abs(enlargement - 1) > kTrueSize) label.detail += ", at " + PercentText(enlargement);
    return label;
}

}  // namespace command
