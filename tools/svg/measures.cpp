#include "svg/measures.h"

#include <cmath>

#include "svg/length.h"
#include "svg/scanner.h"

namespace svg {

std::optional<double> Measures::Read(std::string_view name, double whole, bool size) {
    const host::XmlAttribute at = m_node.Attribute(name);
    if (!at) return std::nullopt;
    const std::string_view text = at.Value();
    if (const std::optional<Length> length = ParseLength(text)) {
        const double value = length->Resolve(m_fontSize, whole);
        if (std::isfinite(value) && !(size && value < 0)) return value;
    } else if (size && EqualsNoCase(Trim(text), "auto")) {
        return std::nullopt;
    }
    m_anyInvalid = true;
    return std::nullopt;
}

}  // namespace svg
