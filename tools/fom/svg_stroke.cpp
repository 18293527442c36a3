#include "fom/svg_stroke.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <optional>
#include <string>
#include <string_view>

#include "fom/arrow_shape.h"
#include "fom/dash_mapping.h"
#include "fom/document_units.h"
#include "fom/fountain_ramp.h"
#include "fom/outline_mapping.h"
#include "fom/round_nib.h"
#include "fom/stroke_painter.h"
#include "fom/svg_marker.h"
#include "fom/svg_number.h"

namespace command {
namespace {

constexpr double kRadiansPerMicroDegree = std::numbers::pi / 180e6;
constexpr std::int32_t kMostAngleNoise = 10;
constexpr double kMostMiter = 1e4;
constexpr std::array<std::string_view, 3> kCaps{"butt", "round", "square"};
constexpr std::array<std::string_view, 3> kJoins{"miter", "round", "bevel"};

template <std::size_t kCount>
std::string_view NameOf(const std::array<std::string_view, kCount>& names, unsigned number) noexcept {
    return names[number < kCount ? number : 0];
}

/// Whether a round nib in user space is this one on the page.
bool IsRoundUnder(const CGE_OUTLINE& pen, const MATRIX& transform) {
    CGE_OUTLINE round;
    FitRoundNib(round, 1, transform);
    const std::int32_t turned = std::abs(pen.nibAngle - round.nibAngle);
    return pen.nibStretch == round.nibStretch && (pen.nibStretch == 100 || turned <= kMostAngleNoise);
}

/// The width in user space. A nib that is not round there gives way to a round one of its area.
double UserWidth(const CGE_OUTLINE& pen, const MATRIX& transform, svg::Omissions& reasons) {
    const double most = StretchesOf(transform).most * kUnitsPerPixel;
    if (!(most > 0)) return pen.width / kUnitsPerPixel;
    if (IsRoundUnder(pen, transform))
        return RoundestWithin((pen.width - 0.5) / most, (pen.width + 0.5) / most);
    reasons.Count("nib that is not round");
    const double shrunk =
        std::abs(Determinant(transform)) / (std::max(1, std::abs(int{pen.nibStretch})) / 100.0);
    return shrunk > 0 ? pen.width / std::sqrt(shrunk) / kUnitsPerPixel : pen.width / most;
}

/// The limit that is written for an angle of millionths of a degree.
double MiterLimit(std::int32_t angle) {
    const auto limit = [](double microDegrees) {
        const double sine = std::sin(microDegrees * kRadiansPerMicroDegree / 2);
        return sine > 1 / kMostMiter ? 1 / sine : kMostMiter;
    };
    return std::max(1.0, RoundestWithin(limit(std::min(angle + 0.5, 180e6)), limit(angle - 0.5)));
}

std::string Dashes(const CGE_OUTLINE& pen, const MATRIX& transform) {
    if (DashRepeat(pen) <= 0) return "none";
    const double scale = StretchesOf(transform).most * kUnitsPerPixel;
    std::string text;
    for (std::size_t i = 0; i < pen.dotDash.Used(); ++i) {
        const double dots = std::max(0, pen.dotDash.element[i]) / (scale > 0 ? scale : kUnitsPerPixel);
        if (i > 0) text += ' ';
        AppendNumber(text, RoundestWithin(dots * (pen.dotLength - 0.5), dots * (pen.dotLength + 0.5)));
    }
    return text;
}

void CountUnsaid(const CGE_OUTLINE& pen, svg::Omissions& reasons) {
    if (pen.GetWideline() && (pen.type & 15) == OutlineWideline) reasons.Count("wideline");
    if (!pen.GetVariableAttribute().points.empty()) reasons.Count("line of variable width");
    if (pen.justification != 0) reasons.Count("line beside its path");
    if (pen.GetProjectMatrix() != MATRIX()) reasons.Count("projected line");
    if (pen.GetDashAdjust() != DashAdjustNone && DashRepeat(pen) > 0)
        reasons.Count("dashes fitted to corners");
}

bool HasMarkers(const svg::Shape& shape) {
    const svg::Style& style = *shape.style;
    return svg::CanHaveMarkers(shape.tag) &&
           (!style.markerStart.empty() || !style.markerMid.empty() || !style.markerEnd.empty());
}

/// Opacity is the drawing's: that of its marker, where it has one.
double MarkerOpacity(const svg::Marker* marker, const svg::Stroke& stroke) {
    if (marker && !marker->fillIsStroke) return marker->fillOpacity * double(marker->fill.color.alpha);
    return stroke.opacity * double(stroke.paint.color.alpha);
}

/// Markers stand at the vertices of a line that is not stroked, too.
bool DeclareNoStroke(const svg::Shape& shape, ElementPaint& paint, svg::Omissions& reasons) {
    paint.Declare("stroke", "none");
    if (!HasMarkers(shape)) return true;
    if (shape.stroke.paint.kind == svg::Paint::Kind::None) {
        reasons.Count("marker kept");
        return false;
    }
    for (const char* property : {"marker-start", "marker-mid", "marker-end"})
        paint.Declare(property, "none");
    return true;
}

}  // namespace

/// Declares what the stroke of one shape is drawn with.
class SvgStrokes::Stroking {
public:
    Stroking(SvgStrokes& strokes, const ShapePaints& paints, const svg::Shape& shape, ElementPaint& paint,
             svg::Omissions& reasons)
        : m_strokes(strokes),
          m_pen(*paints.outline.GetCGEOutline()),
          m_fill(paints.strokeFill.get()),
          m_shape(shape),
          m_stroke(shape.stroke),
          m_paint(paint),
          m_reasons(reasons) {}

    bool Declare() {
        const MATRIX transform =
            FindNibTransform(m_shape.style->nonScalingStroke, m_shape.transform).value_or(MATRIX());
        DeclarePaint();
        m_paint.Declare("stroke-width", NumberText(UserWidth(m_pen, transform, m_reasons)));
        m_paint.Declare("stroke-linecap", NameOf(kCaps, m_pen.endCaps));
        m_paint.Declare("stroke-linejoin", NameOf(kJoins, m_pen.join));
        m_paint.Declare("stroke-miterlimit", NumberText(MiterLimit(m_pen.GetMiterLimit())));
        DeclareDashes(transform);
        DeclareMarkers();
        return m_isWhole;
    }

private:
    void Keep(std::string_view what) {
        m_reasons.Count(what);
        m_isWhole = false;
    }

    void DeclarePaint() {
        if (!m_fill) return DeclareColor(m_pen.color, PaintedPart::Contour, m_shape, m_paint);
        if (!m_strokes.m_fills.Declare(*m_fill, PaintedPart::Contour, m_shape, m_paint, m_reasons))
            m_isWhole = false;
    }

    void DeclareDashes(const MATRIX& transform) {
        const std::string dashes = Dashes(m_pen, transform);
        m_paint.Declare("stroke-dasharray", dashes);
        if (dashes == "none") return;
        const bool shifted = !m_stroke.dashes.empty() && IsPhaseVisible(m_stroke.dashes, m_stroke.dashOffset);
        if (shifted) return Keep("dash offset kept");
        m_paint.Declare("stroke-dashoffset", "0");
    }

    void DeclareMarkers() {
        if (!m_pen.leftArrow && !m_pen.rightArrow && !HasMarkers(m_shape)) return;
        DeclareMarker("marker-start", LineEnd::Start, m_stroke.markerStart);
        if (m_stroke.markerMid) {
            Keep("mid marker kept");
        } else {
            m_paint.Declare("marker-mid", "none");
        }
        DeclareMarker("marker-end", LineEnd::End, m_stroke.markerEnd);
    }

    void DeclareMarker(std::string_view property, LineEnd end, const svg::Marker* drawn) {
        const Said& said = m_strokes.SayMarker(m_pen, end, MarkerOpacity(drawn, m_stroke));
        if (said.cutsLine) m_reasons.Count("line cut back for its arrowhead");
        if (said.definition) return m_strokes.m_definitions.Refer(property, *said.definition, m_paint);
        if (said.hasArrow) return Keep("definitions beyond 256 MiB");
        if (drawn && drawn->outline.empty()) return Keep("marker kept");
        m_paint.Declare(property, "none");
    }

    SvgStrokes& m_strokes;
    const CGE_OUTLINE& m_pen;
    const WFillHandle* m_fill;
    const svg::Shape& m_shape;
    const svg::Stroke& m_stroke;
    ElementPaint& m_paint;
    svg::Omissions& m_reasons;
    bool m_isWhole = true;
};

bool SvgStrokes::Declare(const ShapePaints& paints, const svg::Shape& shape, ElementPaint& paint,
                         svg::Omissions& reasons) {
    const CGE_OUTLINE* pen = paints.outline.GetCGEOutline();
    if (!pen || (pen->type & 15) == OutlineNone || pen->width <= 0)
        return DeclareNoStroke(shape, paint, reasons);
    CountUnsaid(*pen, reasons);
    return Stroking(*this, paints, shape, paint, reasons).Declare();
}

const SvgStrokes::Said& SvgStrokes::SayMarker(const CGE_OUTLINE& pen, LineEnd end, double opacity) {
    const auto [known, isNew] = m_markers.try_emplace(Key(&pen, end, opacity));
    if (!isNew) return known->second;
    const bool left = end == LineEnd::Start;
    const std::optional<Arrow> arrow =
        ReadArrow(left ? pen.leftArrow : pen.rightArrow,
                  left ? pen.GetLeftArrowAttributes() : pen.GetRightArrowAttributes());
    if (!arrow) return known->second;
    known->second.hasArrow = true;
    known->second.cutsLine = arrow->head.lineEnd != 0;
    known->second.definition =
        m_definitions.Add(MarkerDefinition(*arrow, end, ColorText(ToScreen(pen.color)), opacity));
    return known->second;
}

}  // namespace command
