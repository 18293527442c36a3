#include "svg/gradients.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "svg/coordinate.h"
#include "svg/scanner.h"

namespace svg {
namespace {

Spread ReadSpread(const Definition& definition, Omissions& omissions) {
    const std::string_view text = Trim(definition.Get(Field::SpreadMethod));
    if (text == "reflect") return Spread::Reflect;
    if (text == "repeat") return Spread::Repeat;
    if (definition.Has(Field::SpreadMethod) && text != "pad") omissions.Count("invalid spreadMethod");
    return Spread::Pad;
}

bool HasExtent(const Gradient& gradient) {
    if (gradient.kind == Gradient::Kind::Radial) return gradient.r > 0;
    return gradient.x1 != gradient.x2 || gradient.y1 != gradient.y2;
}

}  // namespace

Paint GradientReader::Read(host::XmlNode element) {
    const Definition definition = m_definitions.Read(element);
    const Stops stops = definition.contentOwner ? ReadStops(definition.contentOwner) : nullptr;
    if (!stops || stops->empty()) {
        m_reading.omissions.Count("gradient without stops");
        return {};
    }
    Gradient gradient;
    const bool linear = m_reading.namespaces.TagOf(element) == Tag::LinearGradient;
    gradient.kind = linear ? Gradient::Kind::Linear : Gradient::Kind::Radial;
    gradient.stops = stops;
    ReadVector(definition, element, gradient);
    gradient.transform = ReadTransform(definition.Get(Field::GradientTransform), m_reading.omissions);
    if (!gradient.transform.HasInverse()) {
        m_reading.omissions.Count("paint transform without inverse");
        return {};
    }
    if (stops->size() == 1 || !HasExtent(gradient))
        return {.kind = Paint::Kind::Solid, .color = stops->back().color};
    gradient.spread = ReadSpread(definition, m_reading.omissions);
    gradient.id = element.Attribute("id").Value();
    m_gradients.push_back(std::move(gradient));
    return {.kind = Paint::Kind::Gradient, .gradient = &m_gradients.back()};
}

void GradientReader::ReadVector(const Definition& definition, host::XmlNode element, Gradient& gradient) {
    gradient.units =
        ReadUnits(definition, Field::GradientUnits, Units::ObjectBoundingBox, m_reading.omissions);
    const CoordinateReader in(m_reading, definition, element, gradient.units);
    if (gradient.kind == Gradient::Kind::Linear) {
        gradient.x1 = in.Read(Field::X1, Axis::X, 0);
        gradient.y1 = in.Read(Field::Y1, Axis::Y, 0);
        gradient.x2 = in.Read(Field::X2, Axis::X, 100);
        gradient.y2 = in.Read(Field::Y2, Axis::Y, 0);
        return;
    }
    gradient.cx = in.Read(Field::Cx, Axis::X, 50);
    gradient.cy = in.Read(Field::Cy, Axis::Y, 50);
    gradient.r = in.ReadRadius(Field::R, 50);
    gradient.fx = definition.Has(Field::Fx) ? in.Read(Field::Fx, Axis::X, 50) : gradient.cx;
    gradient.fy = definition.Has(Field::Fy) ? in.Read(Field::Fy, Axis::Y, 50) : gradient.cy;
    gradient.fr = in.ReadRadius(Field::Fr, 0);
}

GradientReader::Stops GradientReader::ReadStops(host::XmlNode owner) {
    const auto [known, isNew] = m_stops.try_emplace(owner.Identity());
    if (!isNew) return known->second;
    const auto isStop = [this](host::XmlNode node) { return m_reading.namespaces.TagOf(node) == Tag::Stop; };
    std::size_t count = 0;
    for (host::XmlNode at = owner.FirstElement(); at; at = at.NextElement())
        count += isStop(at) ? 1U : 0U;
    auto stops = std::make_shared<std::vector<Stop>>();
    stops->reserve(count);
    const Style style = m_reading.cascade.ComputeFromRoot(owner);
    for (host::XmlNode at = owner.FirstElement(); at; at = at.NextElement()) {
        if (isStop(at)) stops->push_back(ReadStop(at, style, stops->empty() ? 0 : stops->back().offset));
    }
    known->second = std::move(stops);
    return known->second;
}

Stop GradientReader::ReadStop(host::XmlNode element, const Style& parent, double atLeast) {
    const std::string_view text = element.Attribute("offset").Value();
    const std::optional<double> offset = ParseFraction(text);
    if (!offset && !text.empty()) m_reading.omissions.Count("invalid stop offset");
    Style style;
    ElementFacts facts;
    m_reading.cascade.Compute(element, parent, style, facts);
    Stop stop;
    stop.offset = std::max(atLeast, std::clamp(offset.value_or(0), 0.0, 1.0));
    stop.color = style.stopColor.current ? style.color : style.stopColor.color;
    stop.color.alpha *= static_cast<float>(style.stopOpacity);
    return stop;
}

}  // namespace svg
