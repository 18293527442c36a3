#include "fom/document_file.h"

#include "host/base/atomic_file.h"
#include "host/base/wstring.h"
#include "host/stream/disk_file_stream.h"

#include "fom/block_reader.h"
#include "fom/document_stream.h"
#include "fom/path_text.h"

namespace command {
namespace {

/// Writes into a file that takes the place of the old one in the end.
class AtomicFileStream final : public AbstractFileStream {
public:
    explicit AtomicFileStream(const std::filesystem::path& path) : m_file(path) {}

    bool Commit(host::Error& error) { return m_file.Commit(error); }
    std::optional<std::uint64_t> GetRemaining() const noexcept override { return std::nullopt; }
    std::uint64_t GetPosition() const noexcept override { return m_file.GetSize(); }

protected:
    std::size_t DoRead(void*, std::size_t) noexcept override { return 0; }
    std::size_t DoWrite(const void* from, std::size_t size) noexcept override {
        return m_file.Write({static_cast<const std::byte*>(from), size}) ? size : 0;
    }

private:
    host::AtomicFile m_file;
};

const char* WhyClosed(const std::filesystem::path& path) {
    std::error_code unknown;
    const std::filesystem::file_status status = std::filesystem::status(path, unknown);
    if (!std::filesystem::exists(status)) return "no such file";
    return std::filesystem::is_regular_file(status) ? "cannot be opened" : "not a regular file";
}

}  // namespace

bool IsDocumentPath(const std::filesystem::path& path) {
    return host::CompareFolded(host::FromPath(path.extension()), L".fomdoc") == 0;
}

bool SaveDocument(const PaintDocument& document, const std::filesystem::path& path, DocumentVersion version,
                  host::Error& error) {
    AtomicFileStream file(path);
    const bool written = WriteDocument(document, file, version, error);
    // What the system says of a failed write is better than that it failed.
    if (written || !file.IsGood()) return file.Commit(error);
    error.what = PathText(path);
    return false;
}

bool ReadDocumentFile(const std::filesystem::path& path, host::Error& error,
                      const std::function<bool(AbstractFileStream&, host::Error&)>& read) {
    DiskFileStream stream(path, DiskFileStream::Mode::Read);
    if (!stream.IsOpen()) error = DocumentFault(0, WhyClosed(path));
    const bool isGood = stream.IsOpen() && read(stream, error);
    if (!isGood) error.what = PathText(path);
    return isGood;
}

std::optional<PaintDocument> LoadDocument(const std::filesystem::path& path, host::Error& error) {
    std::optional<PaintDocument> document;
    ReadDocumentFile(path, error, [&document](AbstractFileStream& stream, host::Error& fault) {
        document = ReadDocument(stream, fault);
        return document.has_value();
    });
    return document;
}

std::optional<DocumentVersion> ReadDocumentVersion(const std::filesystem::path& path, host::Error& error) {
    std::optional<DocumentVersion> version;
    ReadDocumentFile(path, error, [&version](AbstractFileStream& stream, host::Error& fault) {
        version = BlockReader(stream).ReadHead(fault);
        return version.has_value();
    });
    return version;
}

std::optional<RecoveredDocument> RecoverDocument(const std::filesystem::path& path, host::Error& error) {
    std::optional<RecoveredDocument> recovered;
    ReadDocumentFile(path, error, [&recovered](AbstractFileStream& stream, host::Error& fault) {
        recovered = RecoverDocument(stream, fault);
        return recovered.has_value();
    });
    if (recovered && recovered->fault) recovered->fault->what = PathText(path);
    return recovered;
}

}  // namespace command
