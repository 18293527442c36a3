#include <nlohmann/json.hpp>

#include "fom/import_report.h"
#include "fom/pen_fit.h"

namespace command {
namespace {

using Json = nlohmann::ordered_json;

Json Describe(const CGE_OUTLINE& pen) {
    Json dashes = Json::array();
    for (std::size_t i = 0; i < pen.dotDash.Used(); ++i)
        dashes.push_back(pen.dotDash.element[i]);
    return {{"kind", PenKindName(static_cast<CgeOutlineType>(pen.type))},
            {"width", pen.width},
            {"stretch", pen.nibStretch},
            {"angle", pen.nibAngle / 1e6},
            {"dotLength", pen.dotLength},
            {"dashes", dashes}};
}

}  // namespace

std::string ToJson(const PenFit& fit) {
    const MATRIX& m = fit.under;
    const Json json = {{"under", {m.a, m.b, m.c, m.d, m.tx, m.ty}},
                       {"before", Describe(fit.before)},
                       {"after", Describe(fit.after)}};
    return json.dump(2) + "\n";
}

}  // namespace command
