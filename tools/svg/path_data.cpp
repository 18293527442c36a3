#include "svg/path_data.h"

#include "svg/scanner.h"

namespace svg {
namespace {

/// Follows the commands of path data with the current point and the last control point. What it comes to goes
/// to a Bounds or PathSteps.
template <class Sink>
class PathReader {
public:
    PathReader(std::string_view data, Sink& sink) : m_in(data), m_sink(sink) {}

    bool Read() {
        m_in.SkipSpace();
        if (m_in.AtEnd()) return true;
        if (ToLower(m_in.Peek()) != 'm') return false;
        while (!m_in.AtEnd()) {
            const char command = m_in.Take();
            if (!ReadCommand(command)) return false;
            m_in.SkipSpace();
        }
        return true;
    }

private:
    bool ReadCommand(char command) {
        const char kind = ToLower(command);
        m_relative = command == kind;
        if (kind == 'z') {
            m_sink.Close();
            m_at = m_start;
            m_last = 'z';
            return true;
        }
        bool first = true;
        do {
            m_in.SkipSpace();
            if (!ReadSegment(kind == 'm' && !first ? 'l' : kind)) return false;
            first = false;
            m_in.SkipSpace();
        } while (!m_in.AtEnd() && !IsLetter(m_in.Peek()));
        return true;
    }

    bool ReadSegment(char kind) {
        Point p1, p2, to;
        bool read = false;
        switch (kind) {
            case 'm':
                if ((read = Coordinates(to))) {
                    m_start = to;
                    m_sink.Start(to);
                }
                break;
            case 'l':
                if ((read = Coordinates(to))) m_sink.Add(to);
                break;
            case 'h':
            case 'v':
                if ((read = OneCoordinate(kind == 'h', to))) m_sink.Add(to);
                break;
            case 'c':
                if ((read = Coordinates(p1) && Coordinates(p2) && Coordinates(to))) AddCubic(p1, p2, to);
                break;
            case 's':
                p1 = m_last == 'c' || m_last == 's' ? Mirrored() : m_at;
                if ((read = Coordinates(p2) && Coordinates(to))) AddCubic(p1, p2, to);
                break;
            case 'q':
                if ((read = Coordinates(p1) && Coordinates(to))) AddQuadratic(p1, to);
                break;
            case 't':
                p1 = m_last == 'q' || m_last == 't' ? Mirrored() : m_at;
                if ((read = Coordinates(to))) AddQuadratic(p1, to);
                break;
            case 'a':
                read = ReadArc(to);
                break;
            default:
                break;
        }
        if (!read) return false;
        m_at = to;
        m_last = kind;
        return true;
    }

    void AddCubic(Point p1, Point p2, Point to) {
        m_sink.AddCubic(m_at, p1, p2, to);
        m_control = p2;
    }

    void AddQuadratic(Point p1, Point to) {
        m_sink.AddQuadratic(m_at, p1, to);
        m_control = p1;
    }

    Point Mirrored() const { return {2 * m_at.x - m_control.x, 2 * m_at.y - m_control.y}; }

    bool Number(double& value) {
        m_in.SkipSeparator();
        return m_in.Number(value);
    }

    bool Coordinates(Point& p) {
        if (!Number(p.x) || !Number(p.y)) return false;
        if (m_relative) p = {p.x + m_at.x, p.y + m_at.y};
        return true;
    }

    bool OneCoordinate(bool horizontal, Point& p) {
        double value = 0;
        if (!Number(value)) return false;
        p = m_at;
        double& moved = horizontal ? p.x : p.y;
        moved = m_relative ? moved + value : value;
        return true;
    }

    /// A flag is one digit and needs no separator behind it.
    bool Flag(bool& value) {
        m_in.SkipSeparator();
        if (m_in.Peek() != '0' && m_in.Peek() != '1') return false;
        value = m_in.Take() == '1';
        return true;
    }

    bool ReadArc(Point& to) {
        Point radii;
        double rotation = 0;
        bool large = false, sweep = false;
        const bool read = Number(radii.x) && Number(radii.y) && Number(rotation) && Flag(large) &&
                          Flag(sweep) && Coordinates(to);
        if (read) m_sink.AddArc(m_at, radii, rotation, large, sweep, to);
        return read;
    }

    Scanner m_in;
    Sink& m_sink;
    Point m_at, m_start, m_control;
    char m_last = 'm';
    bool m_relative = false;
};

template <class Sink>
bool ReadPoints(std::string_view points, Sink& sink) {
    Scanner in(points);
    in.SkipSpace();
    bool first = true;
    while (!in.AtEnd()) {
        Point p;
        if (!in.Number(p.x)) return false;
        in.SkipSeparator();
        if (!in.Number(p.y)) return false;
        in.SkipSeparator();
        if (first) {
            sink.Start(p);
        } else {
            sink.Add(p);
        }
        first = false;
    }
    return true;
}

}  // namespace

bool AddPathData(std::string_view data, Bounds& bounds) {
    return PathReader(data, bounds).Read();
}

bool AddPathData(std::string_view data, PathSteps& steps) {
    return PathReader(data, steps).Read();
}

bool AddPoints(std::string_view points, Bounds& bounds) {
    return ReadPoints(points, bounds);
}

bool AddPoints(std::string_view points, PathSteps& steps) {
    return ReadPoints(points, steps);
}

}  // namespace svg
