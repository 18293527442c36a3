#pragma once

#include <map>
#include <optional>
#include <tuple>

#include "host/gfx/outline.h"

#include "fom/arrowhead_mapping.h"
#include "fom/paint_document.h"
#include "fom/svg_definitions.h"
#include "fom/svg_fill.h"

#include "svg/omissions.h"
#include "svg/shape.h"

namespace command {

/// Says the outlines of one drawing's shapes as SVG.
class SvgStrokes {
public:
    SvgStrokes(SvgDefinitions& definitions, SvgFills& fills) : m_definitions(definitions), m_fills(fills) {}

    /// Adds the declarations that stroke `shape` with the outline and, where there is one, the fill for it.
    /// Lengths of the pen, which are those on the page, become those of the shape's user space; the opacity
    /// stays the drawing's. What SVG cannot say of the pen is counted.
    ///
    /// Where the pen only stands for more than a pen can say (a marker of many parts, the place in the dashes
    /// where a line starts) the drawing's own stays: counted, and the answer is false.
    bool Declare(const ShapePaints& paints, const svg::Shape& shape, ElementPaint& paint,
                 svg::Omissions& reasons);

private:
    class Stroking;
    /// A marker of a pooled pen; the opacity is that of the drawing.
    using Key = std::tuple<const CGE_OUTLINE*, LineEnd, double>;
    struct Said {
        std::optional<std::size_t> definition;
        bool hasArrow = false;
        bool cutsLine = false;
    };

    const Said& SayMarker(const CGE_OUTLINE& pen, LineEnd end, double opacity);

    SvgDefinitions& m_definitions;
    SvgFills& m_fills;
    std::map<Key, Said> m_markers;
};

}  // namespace command
