#pragma once

#include "host/base/error.h"
#include "host/stream/file_stream.h"

#include "fom/facts.h"

namespace command {

/// What a whole document holds, what it shares and what that takes. False, with `fault` filled, for one with
/// a fault in its blocks.
bool MeasureDocument(AbstractFileStream& stream, Facts& facts, host::Error& fault);

}  // namespace command
