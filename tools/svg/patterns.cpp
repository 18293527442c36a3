#include "svg/patterns.h"

#include <utility>

#include "svg/content_writer.h"
#include "svg/coordinate.h"
#include "svg/data_uri.h"
#include "svg/length.h"
#include "svg/scanner.h"

namespace svg {
namespace {

/// The only drawn child of an element; null when there are none or several.
host::XmlNode OnlyDrawnChild(host::XmlNode parent, const Namespaces& namespaces) {
    host::XmlNode found;
    for (host::XmlNode child = parent.FirstElement(); child; child = child.NextElement()) {
        if (!IsDrawn(namespaces.TagOf(child))) continue;
        if (found) return {};
        found = child;
    }
    return found;
}

/// A length of an image's place; nothing when it says nothing that is valid.
std::optional<double> ReadSide(host::XmlNode element, std::string_view name, double whole) {
    const std::optional<Length> length = ParseLength(element.Attribute(name).Value());
    if (!length) return std::nullopt;
    return length->Resolve(16, whole);
}

}  // namespace

Paint PatternReader::Read(host::XmlNode element) {
    const Definition definition = m_definitions.Read(element);
    Omissions& omissions = m_reading.omissions;
    Pattern pattern;
    pattern.units = ReadUnits(definition, Field::PatternUnits, Units::ObjectBoundingBox, omissions);
    pattern.contentUnits =
        ReadUnits(definition, Field::PatternContentUnits, Units::UserSpaceOnUse, omissions);
    const CoordinateReader in(m_reading, definition, element, pattern.units);
    pattern.x = in.Read(Field::X, Axis::X, 0);
    pattern.y = in.Read(Field::Y, Axis::Y, 0);
    pattern.width = in.Read(Field::Width, Axis::X, 0);
    pattern.height = in.Read(Field::Height, Axis::Y, 0);
    if (!definition.contentOwner || pattern.width <= 0 || pattern.height <= 0) {
        omissions.Count("pattern without content or size");
        return {};
    }
    pattern.transform = ReadTransform(definition.Get(Field::PatternTransform), omissions);
    if (!pattern.transform.HasInverse()) {
        omissions.Count("paint transform without inverse");
        return {};
    }
    pattern.viewBox = ParseViewBox(definition.Get(Field::ViewBox));
    if (!pattern.viewBox && definition.Has(Field::ViewBox)) omissions.Count("invalid viewBox");
    pattern.preserveAspectRatio = Trim(definition.Get(Field::PreserveAspectRatio));
    pattern.id = element.Attribute("id").Value();
    pattern.content = ReadContent(definition.contentOwner);
    m_patterns.push_back(std::move(pattern));
    return {.kind = Paint::Kind::Pattern, .pattern = &m_patterns.back()};
}

PatternReader::Content PatternReader::ReadContent(host::XmlNode owner) {
    if (const auto known = m_contents.find(owner.Identity()); known != m_contents.end()) return known->second;
    auto content = std::make_shared<PatternContent>();
    ContentWriter writer(m_reading, owner);
    content->bytes = writer.Write();
    content->filterSteps = writer.FilterSteps();
    content->image = ReadImage(owner);
    return m_contents.emplace(owner.Identity(), std::move(content)).first->second;
}

std::optional<PatternImage> PatternReader::ReadImage(host::XmlNode owner) {
    Matrix transform;
    double opacity = 1;
    host::XmlNode at = OnlyDrawnChild(owner, m_reading.namespaces);
    for (; at; at = OnlyDrawnChild(at, m_reading.namespaces)) {
        const Tag tag = m_reading.namespaces.TagOf(at);
        if (tag != Tag::Group && tag != Tag::Image) return std::nullopt;
        transform = transform * ReadTransform(at.Attribute("transform").Value(), m_reading.omissions);
        const Style style = m_reading.cascade.ComputeFromRoot(at);
        opacity *= style.opacity;
        if (!style.displayed) return std::nullopt;
        if (tag == Tag::Image) break;
    }
    std::optional<PatternImage> image = at ? DecodeImage(at) : std::nullopt;
    if (image) {
        image->transform = transform;
        image->opacity = opacity;
    }
    return image;
}

std::optional<PatternImage> PatternReader::DecodeImage(host::XmlNode element) {
    const std::string_view href = HrefOf(element);
    if (!IsDataUri(href)) {
        m_reading.omissions.Count("external image");
        return std::nullopt;
    }
    std::optional<DataUri> data = DecodeDataUri(href);
    if (!data || data->bytes.empty()) {
        m_reading.Fail(element, "image data broken");
        return std::nullopt;
    }
    const std::string_view found = SniffImageType(data->bytes);
    if (found.empty()) {
        const bool raster = data->mediaType == "image/png" || data->mediaType == "image/jpeg";
        if (raster) m_reading.Fail(element, "image data broken: not " + data->mediaType);
        m_reading.omissions.Count("image format");
        return std::nullopt;
    }
    PatternImage image;
    image.mediaType = found;
    image.bytes = std::move(data->bytes);
    image.x = ReadSide(element, "x", m_reading.viewport.width).value_or(0);
    image.y = ReadSide(element, "y", m_reading.viewport.height).value_or(0);
    image.width = ReadSide(element, "width", m_reading.viewport.width);
    image.height = ReadSide(element, "height", m_reading.viewport.height);
    image.preserveAspectRatio = Trim(element.Attribute("preserveAspectRatio").Value());
    return image;
}

}  // namespace svg
