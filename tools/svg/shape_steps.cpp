#include "svg/shape_steps.h"

#include <algorithm>
#include <optional>

#include "svg/measures.h"
#include "svg/path_data.h"

namespace svg {
namespace {

/// The two radii of an ellipse or of round corners: one that is missing is as long as the other.
Point ReadRadii(Measures& in) {
    const std::optional<double> x = in.Width("rx");
    const std::optional<double> y = in.Height("ry");
    return {x.value_or(y.value_or(0)), y.value_or(x.value_or(0))};
}

void AddRectangle(Measures& in, PathSteps& steps) {
    const double width = in.Width("width").value_or(0);
    const double height = in.Height("height").value_or(0);
    if (!(width > 0 && height > 0)) return;
    const double left = in.X("x").value_or(0), right = left + width;
    const double top = in.Y("y").value_or(0), bottom = top + height;
    const Point given = ReadRadii(in);
    const Point r{std::min(given.x, width / 2), std::min(given.y, height / 2)};
    if (!(r.x > 0 && r.y > 0)) {
        steps.Start({left, top});
        steps.Add({right, top});
        steps.Add({right, bottom});
        steps.Add({left, bottom});
        return steps.Close();
    }
    const auto corner = [&](Point from, Point to) {
        steps.Add(from);
        steps.AddArc(from, r, 0, false, true, to);
    };
    steps.Start({left + r.x, top});
    corner({right - r.x, top}, {right, top + r.y});
    corner({right, bottom - r.y}, {right - r.x, bottom});
    corner({left + r.x, bottom}, {left, bottom - r.y});
    corner({left, top + r.y}, {left + r.x, top});
    steps.Close();
}

void AddEllipse(Measures& in, Point r, PathSteps& steps) {
    if (!(r.x > 0 && r.y > 0)) return;
    const Point center{in.X("cx").value_or(0), in.Y("cy").value_or(0)};
    const Point ends[] = {{center.x + r.x, center.y},
                          {center.x, center.y + r.y},
                          {center.x - r.x, center.y},
                          {center.x, center.y - r.y}};
    steps.Start(ends[0]);
    for (int i = 0; i < 4; ++i)
        steps.AddArc(ends[i], r, 0, false, true, ends[(i + 1) % 4]);
    steps.Close();
}

void AddBasicShape(Tag tag, Measures& in, PathSteps& steps) {
    switch (tag) {
        case Tag::Rect:
            return AddRectangle(in, steps);
        case Tag::Circle: {
            const double r = in.Radius("r").value_or(0);
            return AddEllipse(in, {r, r}, steps);
        }
        case Tag::Ellipse:
            return AddEllipse(in, ReadRadii(in), steps);
        case Tag::Line:
            steps.Start({in.X("x1").value_or(0), in.Y("y1").value_or(0)});
            return steps.Add({in.X("x2").value_or(0), in.Y("y2").value_or(0)});
        default:
            return;
    }
}

}  // namespace

void AddShape(Tag tag, host::XmlNode node, host::XmlAttribute data, const Style& style,
              const Viewport& viewport, Omissions& omissions, PathSteps& steps) {
    if (tag == Tag::Path) {
        if (data && !AddPathData(data.Value(), steps)) omissions.Count("malformed path data");
        return;
    }
    if (tag == Tag::Polyline || tag == Tag::Polygon) {
        if (data && !AddPoints(data.Value(), steps)) omissions.Count("malformed points");
        if (tag == Tag::Polygon) steps.Close();
        return;
    }
    Measures in(node, style.fontSize, viewport);
    AddBasicShape(tag, in, steps);
    if (in.AnyInvalid()) omissions.Count("invalid length");
}

}  // namespace svg
