#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "svg/marker.h"
#include "svg/paint_servers.h"
#include "svg/reading.h"

namespace svg {

/// Looks up the markers of a document by reference; each definition becomes one marker, made when first asked
/// for.
class MarkerReader {
public:
    /// Most steps that the outlines of one document's markers have together.
    static constexpr std::size_t kMostSteps = 8192;

    MarkerReader(Reading& reading, PaintServers& servers) : m_reading(reading), m_servers(servers) {}

    /// The marker that "#id" leads to; null for one that draws nothing, and when it leads to no marker, which
    /// is counted.
    const Marker* Find(std::string_view reference);

private:
    std::optional<Marker> Read(host::XmlNode element);
    void ReadOrient(host::XmlNode element, Marker& marker);
    void ReadUnits(host::XmlNode element, Marker& marker);
    Point ReadReferencePoint(host::XmlNode element, double fontSize, const ViewBox& box);

    Reading& m_reading;
    PaintServers& m_servers;
    std::unordered_map<const void*, std::optional<Marker>> m_markers;
    std::size_t m_stepsLeft = kMostSteps;
};

}  // namespace svg
