#pragma once

#include "host/stream/file_stream.h"

namespace VyrFOM {

/// Whether the stream's document has the record forms from before 12.50. One whose version is not registered
/// has the current ones.
inline bool IsBefore1250(const AbstractFileStream& stream) noexcept {
    constexpr std::uint32_t kFirst = 1250;
    return stream.GetDocumentVersion().value_or(kFirst) < kFirst;
}

}  // namespace VyrFOM
