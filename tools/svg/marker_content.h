#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "svg/marker.h"
#include "svg/paint_servers.h"
#include "svg/reading.h"

namespace svg {

/// Looks through what a marker element draws.
class MarkerContent {
public:
    /// Groups nested deeper than this are no simple content.
    static constexpr std::size_t kMostDepth = 32;

    /// `viewport` is what percentages relate to; an outline of more than `most` steps is counted and left
    /// out.
    MarkerContent(Reading& reading, PaintServers& servers, const Viewport& viewport, std::size_t most)
        : m_reading(reading), m_servers(servers), m_viewport(viewport), m_most(most) {}

    /// Sets the outline and fill of `marker` when one filled shape is all that `element` draws; `style` is
    /// the element's, `place` leads from the content's coordinates to those of the outline. False when it
    /// draws nothing.
    bool Read(host::XmlNode element, const Style& style, const Matrix& place, Marker& marker);

private:
    /// What an element hands down to what stands in it.
    struct Frame {
        host::XmlNode next;
        Style style;
        Matrix transform;
        double opacity = 1;
    };
    struct Found {
        std::vector<PathStep> steps;
        Paint fill;
        FillRule fillRule = FillRule::NonZero;
        double opacity = 1;
        bool fillIsStroke = false;
    };

    /// Both answer false when the content is more than one filled shape.
    bool Visit(host::XmlNode element);
    bool VisitShape(host::XmlNode element, Tag tag, host::XmlAttribute data, const Frame& inner);

    bool IsStroked(const Style& style);

    Reading& m_reading;
    PaintServers& m_servers;
    Viewport m_viewport;
    std::size_t m_most;
    std::vector<Frame> m_frames;
    std::optional<Found> m_found;
};

Point Apply(const Matrix& matrix, Point p);

/// The box of an outline; nothing when it is empty or not finite.
std::optional<Rect> BoundsOf(const std::vector<PathStep>& outline);

}  // namespace svg
