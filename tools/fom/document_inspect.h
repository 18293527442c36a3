#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/base/error.h"
#include "host/stream/file_stream.h"

#include "fom/facts.h"

namespace command {

/// What of a document file is to be told. Without a choice: its blocks.
struct InspectChoice {
    std::optional<std::uint32_t> fill, outline;
    std::optional<std::string> drawing;
    bool hex = false;  ///< the bytes of that record too

    bool IsOfBlocks() const noexcept { return !fill && !outline && !drawing; }
};

/// Looks into a file from its bytes; what can be read of a damaged one is told. False, with `fault` filled,
/// for a fault, and when what was chosen is not there.
bool InspectDocument(AbstractFileStream& stream, const InspectChoice& choice, Facts& facts,
                     host::Error& fault);

}  // namespace command
