#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "svg/reading.h"

namespace svg {

/// Attributes of gradients and patterns that are inherited by reference.
enum class Field : unsigned char {
    X1,
    Y1,
    X2,
    Y2,
    Cx,
    Cy,
    R,
    Fx,
    Fy,
    Fr,
    GradientUnits,
    GradientTransform,
    SpreadMethod,
    X,
    Y,
    Width,
    Height,
    PatternUnits,
    PatternContentUnits,
    PatternTransform,
    ViewBox,
    PreserveAspectRatio,
    Count,
};

/// A gradient or pattern as written, together with what it inherits from the definitions it refers to.
class Definition {
public:
    std::string_view Get(Field field) const { return m_fields[static_cast<std::size_t>(field)]; }
    bool Has(Field field) const { return Get(field).data() != nullptr; }

    /// The element whose children are the stops or the content; null when no definition of the chain has any.
    host::XmlNode contentOwner;

    /// Puts what `element` itself says over what is inherited.
    void Overlay(host::XmlNode element, const Namespaces& namespaces);

private:
    std::array<std::string_view, static_cast<std::size_t>(Field::Count)> m_fields{};
};

/// Follows references among definitions, each at most once.
class DefinitionReader {
public:
    explicit DefinitionReader(Reading& reading) : m_reading(reading) {}

    /// `element` is a gradient or pattern; references among them are known to be free of circles.
    Definition Read(host::XmlNode element);

private:
    /// The definition that `element` inherits from; null when there is none.
    host::XmlNode TemplateOf(host::XmlNode element);

    Reading& m_reading;
    std::unordered_map<const void*, Definition> m_templates;
};

}  // namespace svg
