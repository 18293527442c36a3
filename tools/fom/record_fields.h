#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/gfx/fill.h"
#include "host/gfx/outline.h"

namespace command {

/// A field of a record's body (docs/formats/bodies.md, docs/formats/records.md) that is not a record itself.
struct RecordField {
    const char* name = "";   ///< as people read it; "unknown field" for a number that has none
    std::size_t offset = 0;  ///< of the value in the body
    std::span<const std::uint8_t> value;
};

/// The fields of a body, those of the records within it too, in their order; as far as they can be read. They
/// point into the body.
std::vector<RecordField> ReadFillFields(std::span<const std::uint8_t> body);
std::vector<RecordField> ReadOutlineFields(std::span<const std::uint8_t> body);

/// The body that a record has in a document. Throws bad_alloc.
std::vector<std::uint8_t> BodyOf(const CGE_FILL& record);
std::vector<std::uint8_t> BodyOf(const CGE_OUTLINE& record);

/// The names of what differs between two records; one word for a fill of another kind. What only one of them
/// has counts as different, unless it is empty.
std::vector<std::string> CompareRecords(const CGE_FILL& before, const CGE_FILL& after);
std::vector<std::string> CompareRecords(const CGE_OUTLINE& before, const CGE_OUTLINE& after);

}  // namespace command
