#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "fom/document_file.h"
#include "fom/facts.h"

namespace command {

/// What a version cannot say of entries, by the name of the field.
struct Losses {
    struct Count {
        std::size_t entries = 0;
        std::size_t uses = 0;  ///< by interiors and strokes of shapes
    };
    std::map<std::string, Count> fields;
    std::size_t before = 0;  ///< distinct entries
    std::size_t after = 0;   ///< those that are distinct for a reader of the version
};

struct DocumentLosses {
    Losses fills, outlines;
};

/// What a reader that knows no later version than that one will miss, from what comes back of each record.
/// The current version loses nothing. Throws bad_alloc.
DocumentLosses FindLosses(const PaintDocument& document, DocumentVersion version);

void AddLosses(const DocumentLosses& losses, Facts& facts);

}  // namespace command
