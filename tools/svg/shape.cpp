#include "svg/shape.h"

#include <cmath>

#include "svg/length.h"
#include "svg/path_data.h"
#include "svg/scanner.h"

namespace svg {
namespace {

/// Reads the lengths of a basic shape.
class Measures {
public:
    Measures(host::XmlNode node, const Style& style, const Viewport& viewport)
        : m_node(node), m_style(style), m_viewport(viewport) {}

    double X(std::string_view name) const { return Read(name, m_viewport.width).value_or(0); }
    double Y(std::string_view name) const { return Read(name, m_viewport.height).value_or(0); }
    double Radius() const { return Read("r", m_viewport.Diagonal()).value_or(0); }

    /// Radii of an ellipse: one that is missing is as long as the other.
    Point Radii() const {
        const std::optional<double> x = Read("rx", m_viewport.width);
        const std::optional<double> y = Read("ry", m_viewport.height);
        return {x.value_or(y.value_or(0)), y.value_or(x.value_or(0))};
    }

private:
    std::optional<double> Read(std::string_view name, double whole) const {
        const host::XmlAttribute at = m_node.Attribute(name);
        const std::optional<Length> length = at ? ParseLength(at.Value()) : std::nullopt;
        if (!length) return std::nullopt;
        return length->Resolve(m_style.fontSize, whole);
    }

    host::XmlNode m_node;
    const Style& m_style;
    const Viewport& m_viewport;
};

void AddBox(Bounds& bounds, double x, double y, double width, double height) {
    bounds.Add({x, y});
    bounds.Add({x + width, y + height});
}

}  // namespace

bool HasGeometry(Tag tag, host::XmlNode node, host::XmlAttribute data, const Style& style,
                 const Viewport& viewport) {
    const Measures in(node, style, viewport);
    switch (tag) {
        case Tag::Path:
        case Tag::Polyline:
        case Tag::Polygon:
            return data && !data.Empty();
        case Tag::Rect:
            return in.X("width") > 0 && in.Y("height") > 0;
        case Tag::Circle:
            return in.Radius() > 0;
        case Tag::Ellipse: {
            const Point radii = in.Radii();
            return radii.x > 0 && radii.y > 0;
        }
        default:
            return true;
    }
}

std::optional<Rect> Shape::Bounds() const {
    const Measures in(node, *style, viewport);
    svg::Bounds bounds;
    switch (tag) {
        case Tag::Path:
            AddPathData(node.Attribute("d").Value(), bounds);
            break;
        case Tag::Polyline:
        case Tag::Polygon:
            AddPoints(node.Attribute("points").Value(), bounds);
            break;
        case Tag::Rect:
            AddBox(bounds, in.X("x"), in.Y("y"), in.X("width"), in.Y("height"));
            break;
        case Tag::Circle: {
            const double r = in.Radius();
            AddBox(bounds, in.X("cx") - r, in.Y("cy") - r, 2 * r, 2 * r);
            break;
        }
        case Tag::Ellipse: {
            const Point r = in.Radii();
            AddBox(bounds, in.X("cx") - r.x, in.Y("cy") - r.y, 2 * r.x, 2 * r.y);
            break;
        }
        case Tag::Line:
            bounds.Add({in.X("x1"), in.Y("y1")});
            bounds.Add({in.X("x2"), in.Y("y2")});
            break;
        default:
            break;
    }
    return bounds.Result();
}

}  // namespace svg
