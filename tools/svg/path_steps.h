#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "svg/path_step.h"

namespace svg {

/// Gathers an outline as steps. What goes on behind Close without a new Start begins with a Move of its own.
class PathSteps {
public:
    /// Holds at most `most` steps.
    explicit PathSteps(std::size_t most = SIZE_MAX) : m_most(most) {}

    /// Begins a sub-path.
    void Start(Point p);
    /// A straight line from the last point.
    void Add(Point to);
    void AddQuadratic(Point from, Point control, Point to);
    void AddCubic(Point from, Point control1, Point control2, Point to);
    /// The elliptical arc of path data, as curves of a quarter turn at most: radii, rotation of the axes in
    /// degrees, and the two flags. It is straight when a radius is zero or numbers cannot hold it.
    void AddArc(Point from, Point radii, double rotation, bool large, bool sweep, Point to);
    /// Ends the sub-path where it began.
    void Close();

    /// Whether steps were dropped.
    bool HasOverflowed() const { return m_overflowed; }
    /// Hands the steps over.
    std::vector<PathStep> Take() { return std::move(m_steps); }

private:
    void Append(const PathStep& step);

    std::size_t m_most;
    std::vector<PathStep> m_steps;
    Point m_start;
    bool m_closed = false;
    bool m_overflowed = false;
};

}  // namespace svg
