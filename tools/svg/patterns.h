#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <unordered_map>

#include "svg/definition.h"
#include "svg/paint.h"

namespace svg {

/// Makes paints of pattern elements.
class PatternReader {
public:
    PatternReader(Reading& reading, DefinitionReader& definitions)
        : m_reading(reading), m_definitions(definitions) {}

    /// A pattern; none when it has no content, no size or a transform without inverse. Damaged image data and
    /// content that paints with itself are faults.
    Paint Read(host::XmlNode element);

private:
    using Content = std::shared_ptr<const PatternContent>;

    Content ReadContent(host::XmlNode owner);
    std::optional<PatternImage> ReadImage(host::XmlNode owner);
    std::optional<PatternImage> DecodeImage(host::XmlNode element);

    Reading& m_reading;
    DefinitionReader& m_definitions;
    std::unordered_map<const void*, Content> m_contents;
    std::deque<Pattern> m_patterns;
};

}  // namespace svg
