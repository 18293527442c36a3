#include "fom/pen_fit.h"

#include <cstddef>
#include <string>

#include "fom/grouped.h"
#include "fom/import_report.h"
#include "fom/pen_text.h"
#include "fom/pen_width.h"

namespace command {
namespace {

constexpr std::size_t kNameWidth = 12;
constexpr std::size_t kColumnWidth = 20;

/// To the right, after one blank at least.
void AppendColumn(std::string& out, const std::string& text) {
    // The degree sign takes two bytes and one column.
    const std::size_t width = text.size() - (text.find("\u00b0") != std::string::npos);
    out.append(width < kColumnWidth ? kColumnWidth - width : 1, ' ') += text;
}

void AppendRow(std::string& out, const std::string& name, const std::string& before,
               const std::string& after) {
    out.append(name).append(kNameWidth - name.size(), ' ');
    AppendColumn(out, before);
    AppendColumn(out, after);
    out += '\n';
}

template <class Describe>
void AppendRow(std::string& out, const char* name, const PenFit& fit, Describe&& describe) {
    AppendRow(out, name, describe(fit.before), describe(fit.after));
}

std::string UnitsText(std::uint32_t length) {
    return Grouped(length) + (length == 1 ? " unit" : " units");
}

std::string DashesText(const CGE_DOTDASHSPEC& dashes) {
    std::string text;
    for (std::size_t i = 0; i < dashes.Used(); ++i)
        text += (i == 0 ? "" : " ") + std::to_string(dashes.element[i]);
    return text;
}

}  // namespace

PenFit FitPen(const PenRequest& request) {
    PenFit fit{request.pen, request.pen, request.under};
    OUTPreAdjustPenWidth(fit.after, &fit.under);
    return fit;
}

std::string ToText(const PenFit& fit) {
    std::string out;
    AppendRow(out, "", "before", "after");
    AppendRow(out, "kind", fit, [](const CGE_OUTLINE& pen) {
        return std::string(PenKindName(static_cast<CgeOutlineType>(pen.type)));
    });
    AppendRow(out, "width", fit, [](const CGE_OUTLINE& pen) { return PointsText(pen.width); });
    AppendRow(out, "", fit,
              [](const CGE_OUTLINE& pen) { return UnitsText(static_cast<std::uint32_t>(pen.width)); });
    AppendRow(out, "stretch", fit,
              [](const CGE_OUTLINE& pen) { return std::to_string(pen.nibStretch) + " %"; });
    AppendRow(out, "angle", fit, [](const CGE_OUTLINE& pen) { return DegreesText(pen.nibAngle); });
    if (fit.before.dotLength == 0) return out;
    AppendRow(out, "dot length", fit, [](const CGE_OUTLINE& pen) { return PointsText(pen.dotLength); });
    AppendRow(out, "", fit, [](const CGE_OUTLINE& pen) { return UnitsText(pen.dotLength); });
    if (fit.before.dotDash.count > 0)
        AppendRow(out, "dashes", fit, [](const CGE_OUTLINE& pen) { return DashesText(pen.dotDash); });
    return out;
}

}  // namespace command
