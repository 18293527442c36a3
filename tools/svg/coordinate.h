#pragma once

#include "svg/definition.h"
#include "svg/paint.h"

namespace svg {

enum class Axis : unsigned char { X, Y, Diagonal };

/// Reads coordinates of gradients and patterns in their units.
class CoordinateReader {
public:
    CoordinateReader(Reading& reading, const Definition& definition, host::XmlNode element, Units units)
        : m_reading(reading), m_definition(definition), m_element(element), m_units(units) {}

    /// The field's value; `percent` of the whole when it says nothing or nothing valid.
    double Read(Field field, Axis axis, double percent) const;
    /// The same for a radius, which is not valid below zero.
    double ReadRadius(Field field, double percent) const;

private:
    double Whole(Axis axis) const;

    Reading& m_reading;
    const Definition& m_definition;
    host::XmlNode m_element;
    Units m_units;
};

/// Reads "objectBoundingBox" or "userSpaceOnUse".
Units ReadUnits(const Definition& definition, Field field, Units absent, Omissions& omissions);

/// Reads a transform; one that is malformed is counted and changes nothing.
Matrix ReadTransform(std::string_view text, Omissions& omissions);

}  // namespace svg
