#pragma once

#include <vector>

#include "host/base/error.h"
#include "host/stream/file_stream.h"

namespace command {

/// Everything that is not as the format wants it, by offset as it is met: also what loading puts up with,
/// such as entries that are equal, that nothing refers to, or that are stored in another way than they are
/// written.
std::vector<host::Error> VerifyDocument(AbstractFileStream& stream);

}  // namespace command
