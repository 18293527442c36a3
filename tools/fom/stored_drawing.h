#pragma once

#include "fom/paint_document.h"
#include "fom/payload_reader.h"

namespace command {

/// Reads the next drawing of a drawings block and checks everything about it but whether its name is there
/// already. Throws bad_alloc.
bool ReadDrawing(PayloadReader& reader, SourceDrawing& drawing);

}  // namespace command
