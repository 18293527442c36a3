#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/base/error.h"
#include "host/stream/file_stream.h"

#include "fom/paint_document.h"

namespace command {

/// Versions of documents, which decide the forms of their records (docs/formats/document.md): major * 100 +
/// minor * 10.
enum class DocumentVersion : std::uint32_t { V1200 = 1200, V1250 = 1250, Current = 1300 };

/// Whether files of that name are documents: it ends in ".fomdoc", in any case.
bool IsDocumentPath(const std::filesystem::path& path);

/// Saves the document as a whole: the old file or the new one, never a mixture. False, with `error` filled,
/// when it fails. Drawings must account for all shapes. Throws bad_alloc, likewise without a trace.
bool SaveDocument(const PaintDocument& document, const std::filesystem::path& path, DocumentVersion version,
                  host::Error& error);

/// Empty, with `error` filled, for anything but a whole document without a fault. Throws bad_alloc.
std::optional<PaintDocument> LoadDocument(const std::filesystem::path& path, host::Error& error);

/// The version of the document in a file; of the rest no more is read.
std::optional<DocumentVersion> ReadDocumentVersion(const std::filesystem::path& path, host::Error& error);

/// What stands before the first fault of a file.
struct RecoveredDocument {
    PaintDocument document;
    /// The first fault; empty for a whole document.
    std::optional<host::Error> fault;
    /// What is not there, a line for each kind of thing, for people.
    std::vector<std::string> missing;
};

/// Empty, with `error` filled, only when not even the head of the file can be read. Shapes whose paints are
/// missing have no fill and no outline.
std::optional<RecoveredDocument> RecoverDocument(const std::filesystem::path& path, host::Error& error);

/// Opens a document file and calls `read(stream, error)`, whose answer is returned; false, with `error`
/// filled, when it cannot be opened. The stream knows how much it has.
bool ReadDocumentFile(const std::filesystem::path& path, host::Error& error,
                      const std::function<bool(AbstractFileStream&, host::Error&)>& read);

}  // namespace command
