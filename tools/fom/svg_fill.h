#pragma once

#include <map>
#include <optional>
#include <tuple>

#include "fom/fill_handle.h"
#include "fom/svg_definitions.h"

#include "svg/omissions.h"
#include "svg/shape.h"

namespace command {

/// What of a shape is painted: its interior or its contour.
enum class PaintedPart : unsigned char { Interior, Contour };

/// Declares a plain colour; where the shape's own one is transparent, its opacity too.
void DeclareColor(const CLR_COLORSPEC& color, PaintedPart part, const svg::Shape& shape, ElementPaint& paint);

/// Says the fills of one drawing's shapes as SVG.
class SvgFills {
public:
    explicit SvgFills(SvgDefinitions& definitions) : m_definitions(definitions) {}

    /// Adds the declarations that paint that part of `shape` with what the handle holds; the opacity stays
    /// the drawing's. False, with the reason counted, for a fill that SVG has no paint for.
    bool Declare(const WFillHandle& fill, PaintedPart part, const svg::Shape& shape, ElementPaint& paint,
                 svg::Omissions& reasons);

private:
    struct Said {
        std::optional<std::size_t> definition;
        svg::Omissions reasons;
    };
    using Key = std::tuple<const CGE_FILL*, double, double, double, double, double, double>;

    Said Say(const CGE_FILL& record, const MATRIX& drift, const svg::Shape& shape);
    const Said& SayOnce(const CGE_FILL& record, const MATRIX& drift, const svg::Shape& shape);

    SvgDefinitions& m_definitions;
    // Of what shapes share: the record and the transform beside it.
    std::map<Key, Said> m_known;
    Said m_last;
};

}  // namespace command
