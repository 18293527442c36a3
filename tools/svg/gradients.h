#pragma once

#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

#include "svg/definition.h"
#include "svg/paint.h"

namespace svg {

/// Makes paints of gradient elements.
class GradientReader {
public:
    GradientReader(Reading& reading, DefinitionReader& definitions)
        : m_reading(reading), m_definitions(definitions) {}

    /// A gradient; a solid colour when it has one stop or no extent; none when it has no stops, or a
    /// transform without inverse.
    Paint Read(host::XmlNode element);

private:
    using Stops = std::shared_ptr<const std::vector<Stop>>;

    Stops ReadStops(host::XmlNode owner);
    Stop ReadStop(host::XmlNode element, const Style& parent, double atLeast);
    void ReadVector(const Definition& definition, host::XmlNode element, Gradient& gradient);

    Reading& m_reading;
    DefinitionReader& m_definitions;
    std::unordered_map<const void*, Stops> m_stops;
    std::deque<Gradient> m_gradients;
};

}  // namespace svg
