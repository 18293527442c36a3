#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "host/xml/xml_document.h"

#include "svg/bounds.h"
#include "svg/matrix.h"
#include "svg/omissions.h"
#include "svg/paint.h"
#include "svg/stroke.h"
#include "svg/style.h"
#include "svg/tags.h"
#include "svg/viewport.h"

namespace svg {

/// One time that a "use" is drawn.
struct Instance {
    host::XmlNode use;
    /// The element that it shows.
    host::XmlNode target;
    /// Distinct for each time in the drawing.
    std::size_t number = 0;
};

/// One painted shape as it is drawn. Lives while it is visited; what it points to belongs to the document.
struct Shape {
    Tag tag = Tag::Unknown;
    /// Local name of the element ("path"), and its id, which may be empty.
    std::string_view element;
    std::string_view id;

    /// From the shape's own coordinates to those inside the outermost svg element.
    Matrix transform;

    /// What fills the shape. A line has no interior, so that its fill is none whatever its style says.
    Paint fill;
    FillRule fillRule = FillRule::NonZero;
    /// Opacity of the fill, from 0 to 1; colours have an alpha of their own beside it.
    double fillOpacity = 1;
    Stroke stroke;
    /// Product of the "opacity" of the shape and of everything it stands in.
    double layerOpacity = 1;

    /// The "use" elements that it is drawn through, outermost first; none for a shape that is drawn where it
    /// stands. Valid while the shape is visited.
    std::span<const Instance> instances;

    /// The whole computed style.
    const Style* style = nullptr;
    Viewport viewport;

    /// The box of the geometry in the shape's own coordinates, stroke not included. Read from the geometry
    /// when asked for; where path data or points are malformed, what stands before the mistake counts, as it
    /// is what is drawn, and the shape is counted in `omissions`. Nothing for text and for geometry that is
    /// not finite.
    std::optional<Rect> Bounds(Omissions& omissions) const;

    /// Where the element starts in the text of the document: its byte and its line, counted from 1.
    std::size_t Offset() const { return node.Offset(); }
    std::uint32_t Line() const { return xml->LineOf(node.Offset()); }

    const host::XmlDocument* xml = nullptr;
    host::XmlNode node;
};

/// Whether a shape of that kind has geometry to draw; `data` is the "d" or "points" attribute. Counted is a
/// shape with an invalid length, under another name when it has no size for that.
bool HasGeometry(Tag tag, host::XmlNode node, host::XmlAttribute data, const Style& style,
                 const Viewport& viewport, Omissions& omissions);

}  // namespace svg
