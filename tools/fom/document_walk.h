#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "fom/paint_document.h"
#include "fom/payload_reader.h"
#include "fom/stored_shapes.h"

namespace command {

struct StoredEntry {
    bool isFill = true;
    std::uint32_t number = 0;
    std::uint64_t offset = 0;  ///< of the record in the file
    std::span<const std::uint8_t> record;
};

struct StoredDrawing {
    std::uint32_t number = 0;
    std::uint64_t offset = 0;
    std::uint64_t bytes = 0;
    std::uint32_t firstShape = 0;
    SourceDrawing drawing;
};

/// Shows what is in blocks without making a document of it. What is not set is passed over.
struct BlockVisitor {
    std::function<void(const StoredEntry&)> entry;
    std::function<void(const StoredDrawing&)> drawing;
    std::function<void(const StoredShapes&)> shapes;
};

/// Goes through a block as far as it can be read; `fault` is filled, and the answer false, where it cannot.
/// For the end block, and for unknown ones, the run is empty. Throws bad_alloc.
bool WalkBlock(const Block& block, const BlockVisitor& visitor, BlockRun& run, host::Error& fault);

}  // namespace command
