#include "fom/demo_reasons.h"

#include <algorithm>
#include <array>

namespace command {

bool ShowsInRewrite(std::string_view name) noexcept {
    static constexpr std::array<std::string_view, 26> shown{
        "arrowheads of too many widths",
        "clipped marker",
        "dashes",
        "dashes beyond ten",
        "dashes fitted to corners",
        "focal radius",
        "gradient coordinates out of range",
        "invalid marker orient",
        "invalid marker units",
        "line beside its path",
        "line cut back for its arrowhead",
        "line of variable width",
        "marker colour",
        "marker fill rule",
        "marker outline too long",
        "marker with a fixed angle",
        "nib that is not round",
        "pattern content measured apart from its tile",
        "pattern image beside its tile",
        "pattern image opacity",
        "projected line",
        "stop offset between whole per cents",
        "stops beyond 65535",
        "stroke coordinates out of range",
        "tiles that are shifted or mirrored",
        "wideline",
    };
    return std::find(shown.begin(), shown.end(), name) != shown.end();
}

}  // namespace command
