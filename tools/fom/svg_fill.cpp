#include "fom/svg_fill.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "fom/document_units.h"
#include "fom/fountain_ramp.h"
#include "fom/svg_gradient.h"
#include "fom/svg_number.h"
#include "fom/svg_pattern.h"

namespace command {
namespace {

constexpr double kNoise = 1e-9;

/// From the user space that the handle's fill was made in to that of the shape: the identity for what follows
/// the shape's own transform. Empty for a shape that is drawn without an area.
std::optional<MATRIX> FindDrift(const MATRIX& tiling, const svg::Shape& shape) {
    const MATRIX own = ToDocumentUnits(ToMatrix(shape.transform));
    if (tiling == own) return MATRIX();
    const std::optional<MATRIX> inverse = Inverse(own);
    if (!inverse) return std::nullopt;
    const MATRIX drift = *inverse * tiling;
    if (!IsFinite(drift)) return std::nullopt;
    const auto is = [](double value, double expected) { return std::abs(value - expected) < kNoise; };
    const bool none = is(drift.a, 1) && is(drift.b, 0) && is(drift.c, 0) && is(drift.d, 1) &&
                      std::abs(drift.tx) < kNoise * kUnitsPerPixel &&
                      std::abs(drift.ty) < kNoise * kUnitsPerPixel;
    return none ? MATRIX() : drift;
}

std::string_view PropertyOf(PaintedPart part) noexcept {
    return part == PaintedPart::Contour ? "stroke" : "fill";
}

}  // namespace

void DeclareColor(const CLR_COLORSPEC& color, PaintedPart part, const svg::Shape& shape,
                  ElementPaint& paint) {
    const bool isContour = part == PaintedPart::Contour;
    const svg::Paint& drawn = isContour ? shape.stroke.paint : shape.fill;
    paint.Declare(PropertyOf(part), ColorText(ToScreen(color)));
    if (drawn.kind != svg::Paint::Kind::Solid || drawn.color.alpha >= 1) return;
    const double opacity = isContour ? shape.stroke.opacity : shape.fillOpacity;
    paint.Declare(isContour ? "stroke-opacity" : "fill-opacity",
                  NumberText(opacity * double(drawn.color.alpha)));
}

bool SvgFills::Declare(const WFillHandle& fill, PaintedPart part, const svg::Shape& shape,
                       ElementPaint& paint, svg::Omissions& reasons) {
    const CGE_FILL* record = fill.GetCGEFill();
    const CgeFillType kind = record ? record->GetType() : FillNone;
    if (kind == FillNone) {
        paint.Declare(PropertyOf(part), "none");
        return true;
    }
    if (kind == FillUniform) {
        DeclareColor(record->Uniform().color, part, shape, paint);
        return true;
    }
    const std::optional<MATRIX> drift = FindDrift(fill.GetTilingMatrix(), shape);
    if (!drift) {
        reasons.Count("fill of a shape without an area");
        return false;
    }
    const Said& said = SayOnce(*record, *drift, shape);
    reasons.Add(said.reasons);
    if (said.definition) m_definitions.Refer(PropertyOf(part), *said.definition, paint);
    return said.definition.has_value();
}

const SvgFills::Said& SvgFills::SayOnce(const CGE_FILL& record, const MATRIX& drift,
                                        const svg::Shape& shape) {
    if (record.GetType() == FillFountain && DependsOnShape(record.Fountain(), drift))
        return m_last = Say(record, drift, shape);
    const Key key(&record, drift.a, drift.b, drift.c, drift.d, drift.tx, drift.ty);
    const auto known = m_known.find(key);
    if (known != m_known.end()) return known->second;
    return m_known.emplace(key, Say(record, drift, shape)).first->second;
}

SvgFills::Said SvgFills::Say(const CGE_FILL& record, const MATRIX& drift, const svg::Shape& shape) {
    Said said;
    std::optional<std::string> text;
    switch (record.GetType()) {
        case FillFountain:
            text = GradientDefinition(record.Fountain(), drift, shape, said.reasons);
            break;
        case FillVector:
        case FillColorBitmap:
            text = PatternDefinition(record, drift, said.reasons);
            break;
        default:
            said.reasons.Count("fill that SVG has no paint for");
            break;
    }
    if (!text) return said;
    said.definition = m_definitions.Add(*std::move(text));
    if (!said.definition) said.reasons.Count("definitions beyond 256 MiB");
    return said;
}

}  // namespace command
