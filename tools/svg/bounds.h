#pragma once

#include <optional>

namespace svg {

/// An upright rectangle in user units.
struct Rect {
    double left = 0, top = 0, right = 0, bottom = 0;

    bool operator==(const Rect&) const = default;
    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
};

struct Point {
    double x = 0, y = 0;
};

/// Grows around points and curves. Curves count with their exact extrema, not with their control points.
class Bounds {
public:
    void Add(Point p);
    /// Begins a sub-path.
    void Start(Point p) { Add(p); }
    /// Ends a sub-path where it began.
    void Close() {}
    void AddQuadratic(Point from, Point control, Point to);
    void AddCubic(Point from, Point control1, Point control2, Point to);
    /// The elliptical arc of path data: radii, rotation of the axes in degrees, and the two flags.
    void AddArc(Point from, Point radii, double rotation, bool large, bool sweep, Point to);

    /// Nothing when no point was added or one was not finite.
    std::optional<Rect> Result() const;

private:
    Rect m_rect;
    bool m_empty = true;
    bool m_finite = true;
};

}  // namespace svg
