#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/base/export.h"

namespace host {

/// A field of a body, or of a record in it, as it is stored: docs/formats/bodies.md.
struct BodyField {
    const char* name = "";  ///< for people, docs/formats/records.md; "unknown field" for a number without one
    std::size_t offset = 0;  ///< of the value in the body
    std::span<const std::uint8_t> value;
};

/// The fields of a fill's body and of an outline's, in their order, up to the first fault; those of a record
/// within it stand in its place. Lists, widelines and the attributes of arrowheads and of the width are one
/// value each, so that no name comes twice in a body that was written. Any bytes may be given; the fields
/// point into them. Throws bad_alloc.
FOM_API std::vector<BodyField> ReadFillFields(std::span<const std::uint8_t> body);
FOM_API std::vector<BodyField> ReadOutlineFields(std::span<const std::uint8_t> body);

}  // namespace host
