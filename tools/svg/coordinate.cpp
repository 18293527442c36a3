#include "svg/coordinate.h"

#include <cmath>
#include <optional>

#include "svg/length.h"
#include "svg/scanner.h"

namespace svg {

double CoordinateReader::Whole(Axis axis) const {
    if (m_units == Units::ObjectBoundingBox) return 1;
    const Viewport& viewport = m_reading.viewport;
    return axis == Axis::X ? viewport.width : axis == Axis::Y ? viewport.height : viewport.Diagonal();
}

double CoordinateReader::Read(Field field, Axis axis, double percent) const {
    const double whole = Whole(axis);
    if (!m_definition.Has(field)) return percent * whole / 100;
    const std::optional<Length> length = ParseLength(m_definition.Get(field));
    if (length) {
        const bool relative = length->unit == Length::Unit::Em || length->unit == Length::Unit::Ex;
        const double fontSize = relative ? m_reading.cascade.ComputeFromRoot(m_element).fontSize : 16;
        const double value = length->Resolve(fontSize, whole);
        if (std::isfinite(value)) return value;
    }
    m_reading.omissions.Count("invalid paint coordinate");
    return percent * whole / 100;
}

double CoordinateReader::ReadRadius(Field field, double percent) const {
    const double radius = Read(field, Axis::Diagonal, percent);
    if (radius >= 0) return radius;
    m_reading.omissions.Count("invalid paint coordinate");
    return percent * Whole(Axis::Diagonal) / 100;
}

Units ReadUnits(const Definition& definition, Field field, Units absent, Omissions& omissions) {
    const std::string_view text = Trim(definition.Get(field));
    if (text == "userSpaceOnUse") return Units::UserSpaceOnUse;
    if (text == "objectBoundingBox") return Units::ObjectBoundingBox;
    if (definition.Has(field)) omissions.Count("invalid paint units");
    return absent;
}

Matrix ReadTransform(std::string_view text, Omissions& omissions) {
    if (text.empty()) return {};
    const std::optional<Matrix> matrix = ParseTransform(text);
    if (!matrix) omissions.Count("invalid transform");
    return matrix.value_or(Matrix());
}

}  // namespace svg
