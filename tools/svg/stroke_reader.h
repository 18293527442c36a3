#pragma once

#include "svg/marker_reader.h"
#include "svg/paint_servers.h"
#include "svg/reading.h"
#include "svg/stroke.h"

namespace svg {

/// Makes strokes of computed styles. Owns the markers.
class StrokeReader {
public:
    StrokeReader(Reading& reading, PaintServers& servers)
        : m_reading(reading), m_servers(servers), m_markers(reading, servers) {}

    /// Fills in `stroke`, which is as new, for a shape of that kind.
    void Read(Tag tag, const Style& style, const Viewport& viewport, Stroke& stroke);

private:
    void ReadDashes(const Style& style, double whole, Stroke& stroke);
    void ReadMarkers(const Style& style, Stroke& stroke);
    /// A length of the stroke; `otherwise` when numbers cannot hold it.
    double Resolve(const Length& length, const Style& style, double whole, double otherwise,
                   std::string_view fault);

    Reading& m_reading;
    PaintServers& m_servers;
    MarkerReader m_markers;
};

}  // namespace svg
