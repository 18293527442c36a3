#pragma once

#include <optional>

#include "host/stream/file_stream.h"

#include "fom/document_file.h"

namespace command {

// The bytes of document files, wherever they are. What is read begins where the stream stands, and ends where
// the stream, which knows how much it has, does. Main thread only.

/// False, with `error` filled, when it fails. Throws bad_alloc.
bool WriteDocument(const PaintDocument& document, AbstractFileStream& stream, DocumentVersion version,
                   host::Error& error);
/// As LoadDocument and RecoverDocument. Offsets of errors count from where the stream stood.
std::optional<PaintDocument> ReadDocument(AbstractFileStream& stream, host::Error& error);
std::optional<RecoveredDocument> RecoverDocument(AbstractFileStream& stream, host::Error& error);

}  // namespace command
