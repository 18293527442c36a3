#include "fom/svg_marker.h"

#include "fom/element_paint.h"
#include "fom/svg_definitions.h"
#include "fom/svg_number.h"

namespace command {
namespace {

constexpr double kThousandths = 1000;

void AppendPoint(std::string& out, const MATRIX& m, const POINT& point) {
    const VECTOR2D p = TransformPoint(m, {double(point.x), double(point.y)});
    AppendNumber(out, WithoutNoise(p.x, 1));
    out += ' ';
    AppendNumber(out, WithoutNoise(p.y, 1));
}

void AppendStep(std::string& out, const MATRIX& m, const CGE_ARROWSTEP& step) {
    switch (step.kind) {
        case kArrowMove:
            return AppendPoint(out += 'M', m, step.to);
        case kArrowLine:
            return AppendPoint(out += 'L', m, step.to);
        case kArrowCurve:
            AppendPoint(out += 'C', m, step.control1);
            AppendPoint(out += ' ', m, step.control2);
            return AppendPoint(out += ' ', m, step.to);
        case kArrowClose:
            out += 'Z';
    }
}

/// Areas are filled; an open sub-path is a line as wide as the one that it ends.
std::string Path(const std::string& data, const ElementPaint& paint) {
    return data.empty() ? std::string() : "<path d=\"" + data + "\" style=\"" + paint.declarations + "\"/>";
}

}  // namespace

std::string MarkerDefinition(const Arrow& arrow, LineEnd end, const std::string& color, double opacity) {
    MATRIX m = PlaceArrow(arrow.place);
    // At its start a line runs on against the marker's x axis; an arrowhead's left is up.
    const double along = end == LineEnd::Start ? -1 : 1;
    UTLStretchMatrix(m, along / kThousandths, -along / kThousandths);
    std::string areas, lines;
    ForEachSubPath(arrow.head, [&](auto steps, bool closed) {
        for (const CGE_ARROWSTEP& step : steps)
            AppendStep(closed ? areas : lines, m, step);
    });
    ElementPaint area, line;
    area.Declare("fill", color);
    area.Declare("fill-opacity", NumberText(opacity));
    area.Declare("fill-rule", "evenodd");
    area.Declare("stroke", "none");
    line.Declare("fill", "none");
    line.Declare("stroke", color);
    line.Declare("stroke-opacity", NumberText(opacity));
    line.Declare("stroke-width", "1");
    line.Declare("stroke-linecap", "round");
    line.Declare("stroke-linejoin", "round");
    line.Declare("stroke-dasharray", "none");
    for (ElementPaint* paint : {&area, &line})
        paint->Declare("marker", "none");
    std::string text = "<marker id=\"";
    text += kIdMark;
    text += "\" orient=\"auto\" markerWidth=\"1\" markerHeight=\"1\" style=\"overflow:visible!important\">";
    return text.append(Path(areas, area)).append(Path(lines, line)).append("</marker>");
}

}  // namespace command
