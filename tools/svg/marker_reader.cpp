#include "svg/marker_reader.h"

#include <cmath>
#include <numbers>
#include <utility>

#include "svg/marker_content.h"
#include "svg/measures.h"
#include "svg/scanner.h"

namespace svg {
namespace {

/// By how much of a marker's size its outline may lie outside before it counts as clipped.
constexpr double kClipTolerance = 0.1;

std::optional<double> ParseAngle(std::string_view text) {
    Scanner in(text);
    double value = 0;
    in.SkipSpace();
    if (!in.Number(value)) return std::nullopt;
    const std::string_view unit = Trim(in.Rest());
    if (EqualsNoCase(unit, "grad")) return value * 0.9;
    if (EqualsNoCase(unit, "rad")) return value * 180 / std::numbers::pi;
    if (EqualsNoCase(unit, "turn")) return value * 360;
    if (unit.empty() || EqualsNoCase(unit, "deg")) return value;
    return std::nullopt;
}

/// Where a keyword puts the reference point between the edges of the view box.
std::optional<double> KeywordFraction(std::string_view text, std::string_view low, std::string_view high) {
    text = Trim(text);
    if (text == low) return 0;
    if (text == "center") return 0.5;
    if (text == high) return 1;
    return std::nullopt;
}

bool IsClipped(const std::vector<PathStep>& outline, const Rect& clip) {
    const std::optional<Rect> box = BoundsOf(outline);
    if (!box) return false;
    const double x = kClipTolerance * clip.Width();
    const double y = kClipTolerance * clip.Height();
    return box->left < clip.left - x || box->right > clip.right + x || box->top < clip.top - y ||
           box->bottom > clip.bottom + y;
}

}  // namespace

const Marker* MarkerReader::Find(std::string_view reference) {
    const host::XmlNode element = m_reading.ids.FindReference(reference);
    if (!element || m_reading.namespaces.TagOf(element) != Tag::Marker) {
        m_reading.CountUnresolved(reference);
        return nullptr;
    }
    const auto [found, isNew] = m_markers.try_emplace(element.Identity());
    if (isNew) found->second = Read(element);
    return found->second ? &*found->second : nullptr;
}

std::optional<Marker> MarkerReader::Read(host::XmlNode element) {
    const Style style = m_reading.cascade.ComputeFromRoot(element);
    Measures in(element, style.fontSize, m_reading.viewport);
    const double width = in.Width("markerWidth").value_or(3);
    const double height = in.Height("markerHeight").value_or(3);
    if (in.AnyInvalid()) m_reading.omissions.Count("invalid length");
    const std::string_view boxText = element.Attribute("viewBox").Value();
    const std::optional<ViewBox> given = ParseViewBox(boxText);
    if (!given && !boxText.empty()) m_reading.omissions.Count("invalid viewBox");
    const ViewBox box = given.value_or(ViewBox{0, 0, width, height});
    if (width == 0 || height == 0 || box.width == 0 || box.height == 0) return std::nullopt;

    Matrix place = FitViewBox(box, width, height, element.Attribute("preserveAspectRatio").Value());
    const Point reference = Apply(place, ReadReferencePoint(element, style.fontSize, box));
    place = Matrix::Translation(-reference.x, -reference.y) * place;

    Marker marker;
    ReadUnits(element, marker);
    ReadOrient(element, marker);
    marker.id = element.Attribute("id").Value();
    MarkerContent content(m_reading, m_servers, {box.width, box.height}, m_stepsLeft);
    if (!content.Read(element, style, place, marker)) return std::nullopt;
    m_stepsLeft -= marker.outline.size();
    const Rect clip{-reference.x, -reference.y, width - reference.x, height - reference.y};
    if (!style.overflowVisible && IsClipped(marker.outline, clip))
        m_reading.omissions.Count("clipped marker");
    return marker;
}

Point MarkerReader::ReadReferencePoint(host::XmlNode element, double fontSize, const ViewBox& box) {
    Measures in(element, fontSize, {box.width, box.height});
    const std::optional<double> x = KeywordFraction(element.Attribute("refX").Value(), "left", "right");
    const std::optional<double> y = KeywordFraction(element.Attribute("refY").Value(), "top", "bottom");
    const Point result{x ? box.x + *x * box.width : in.X("refX").value_or(0),
                       y ? box.y + *y * box.height : in.Y("refY").value_or(0)};
    if (in.AnyInvalid()) m_reading.omissions.Count("invalid length");
    return result;
}

void MarkerReader::ReadUnits(host::XmlNode element, Marker& marker) {
    const std::string_view text = Trim(element.Attribute("markerUnits").Value());
    marker.strokeWidthUnits = text != "userSpaceOnUse";
    if (marker.strokeWidthUnits && !text.empty() && text != "strokeWidth")
        m_reading.omissions.Count("invalid marker units");
}

void MarkerReader::ReadOrient(host::XmlNode element, Marker& marker) {
    const std::string_view text = Trim(element.Attribute("orient").Value());
    if (text == "auto") {
        marker.orient = Marker::Orient::Auto;
    } else if (text == "auto-start-reverse") {
        marker.orient = Marker::Orient::AutoStartReverse;
    } else if (const std::optional<double> angle = ParseAngle(text); angle && std::isfinite(*angle)) {
        marker.angle = *angle;
    } else if (!text.empty()) {
        m_reading.omissions.Count("invalid marker orient");
    }
}

}  // namespace svg
