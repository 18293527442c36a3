#include "svg/shape.h"

#include "svg/measures.h"
#include "svg/path_data.h"

namespace svg {
namespace {

bool AddBox(Bounds& bounds, double x, double y, double width, double height) {
    bounds.Add({x, y});
    bounds.Add({x + width, y + height});
    return true;
}

bool AddRound(Bounds& bounds, Measures& in, double rx, double ry) {
    if (!(rx > 0 && ry > 0)) return false;
    return AddBox(bounds, in.X("cx").value_or(0) - rx, in.Y("cy").value_or(0) - ry, 2 * rx, 2 * ry);
}

/// Adds the outline of a basic shape; false when it has no size.
bool AddBasicShape(Tag tag, Measures& in, Bounds& bounds) {
    switch (tag) {
        case Tag::Rect: {
            const double width = in.Width("width").value_or(0);
            const double height = in.Height("height").value_or(0);
            if (!(width > 0 && height > 0)) return false;
            return AddBox(bounds, in.X("x").value_or(0), in.Y("y").value_or(0), width, height);
        }
        case Tag::Circle: {
            const double r = in.Radius("r").value_or(0);
            return AddRound(bounds, in, r, r);
        }
        case Tag::Ellipse: {
            // A radius that is missing is as long as the other.
            const std::optional<double> x = in.Width("rx");
            const std::optional<double> y = in.Height("ry");
            return AddRound(bounds, in, x.value_or(y.value_or(0)), y.value_or(x.value_or(0)));
        }
        case Tag::Line:
            bounds.Add({in.X("x1").value_or(0), in.Y("y1").value_or(0)});
            bounds.Add({in.X("x2").value_or(0), in.Y("y2").value_or(0)});
            return true;
        default:
            return true;
    }
}

}  // namespace

bool HasGeometry(Tag tag, host::XmlNode node, host::XmlAttribute data, const Style& style,
                 const Viewport& viewport, Omissions& omissions) {
    if (tag == Tag::Path || tag == Tag::Polyline || tag == Tag::Polygon) return data && !data.Empty();
    Measures in(node, style.fontSize, viewport);
    Bounds unused;
    const bool sized = AddBasicShape(tag, in, unused);
    if (in.AnyInvalid()) omissions.Count(sized ? "invalid length" : "shape without valid size");
    return sized;
}

std::optional<Rect> Shape::Bounds(Omissions& omissions) const {
    svg::Bounds bounds;
    if (tag == Tag::Path) {
        if (!AddPathData(node.Attribute("d").Value(), bounds)) omissions.Count("malformed path data");
    } else if (tag == Tag::Polyline || tag == Tag::Polygon) {
        if (!AddPoints(node.Attribute("points").Value(), bounds)) omissions.Count("malformed points");
    } else {
        Measures in(node, style->fontSize, viewport);
        AddBasicShape(tag, in, bounds);
    }
    return bounds.Result();
}

}  // namespace svg
