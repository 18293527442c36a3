#pragma once

#include <optional>
#include <string_view>

#include "host/xml/xml_node.h"

#include "svg/viewport.h"

namespace svg {

/// Reads the lengths of one element in user units. Each answers nothing when the attribute is absent or says
/// "auto", and when it is invalid: no length, out of range, or a size below zero. What is invalid counts as
/// not given.
class Measures {
public:
    Measures(host::XmlNode node, double fontSize, const Viewport& viewport)
        : m_node(node), m_fontSize(fontSize), m_viewport(viewport) {}

    std::optional<double> X(std::string_view name) { return Read(name, m_viewport.width, false); }
    std::optional<double> Y(std::string_view name) { return Read(name, m_viewport.height, false); }
    std::optional<double> Width(std::string_view name) { return Read(name, m_viewport.width, true); }
    std::optional<double> Height(std::string_view name) { return Read(name, m_viewport.height, true); }
    std::optional<double> Radius(std::string_view name) { return Read(name, m_viewport.Diagonal(), true); }

    /// Whether anything read so far was invalid.
    bool AnyInvalid() const { return m_anyInvalid; }

private:
    std::optional<double> Read(std::string_view name, double whole, bool size);

    host::XmlNode m_node;
    double m_fontSize;
    Viewport m_viewport;
    bool m_anyInvalid = false;
};

}  // namespace svg
