#include "host/base/temp_data.h"

#include <new>

#include "base/temp_table.h"

namespace {

using host::detail::Blob;
using host::detail::BlobRef;
using host::detail::TempEntry;
using host::detail::TempFile;
using host::detail::TempFileRef;
using host::detail::TempTable;

// Never destroyed: pools that die in static destructors still delete their entries. In place, so that making
// it cannot fail.
TempTable& Table() noexcept {
    alignas(TempTable) static std::byte storage[sizeof(TempTable)];
    static TempTable& table = *::new (static_cast<void*>(storage)) TempTable;
    return table;
}

/// What both kinds of streams have: a place.
class PlacedStream : public TmpStream {
public:
    void Seek(std::uint64_t position) override { m_position = position; }

protected:
    std::size_t ReadFrom(const Blob& blob, void* to, std::size_t size) noexcept {
        const std::size_t got = blob.Read(m_position, {static_cast<std::byte*>(to), size});
        m_position += got;
        return got;
    }

    std::uint64_t m_position = 0;
};

class ReadingStream final : public PlacedStream {
public:
    explicit ReadingStream(BlobRef blob) noexcept : m_blob(std::move(blob)) {}

    std::size_t Read(void* to, std::size_t size) override { return ReadFrom(*m_blob, to, size); }
    std::size_t Write(const void*, std::size_t) override { return 0; }
    std::uint64_t GetSize() const override { return m_blob->GetSize(); }

private:
    BlobRef m_blob;
};

class WritingStream final : public PlacedStream {
public:
    explicit WritingStream(TempFileRef file) noexcept : m_file(std::move(file)) {}

    std::size_t Read(void* to, std::size_t size) override { return ReadFrom(*m_file->Snapshot(), to, size); }
    std::size_t Write(const void* from, std::size_t size) override {
        const std::size_t done = m_file->Write(m_position, {static_cast<const std::byte*>(from), size});
        m_position += done;
        return done;
    }
    std::uint64_t GetSize() const override { return m_file->Snapshot()->GetSize(); }

private:
    TempFileRef m_file;
};

unsigned AddFile(BlobRef blob, unsigned tag) {
    TempEntry entry;
    entry.file = TempFileRef::Adopt(new TempFile(std::move(blob)));
    entry.tag = tag;
    return Table().Add(std::move(entry));
}

}  // namespace

unsigned TMPCreateTmpFile(std::span<const std::byte> bytes) {
    BlobRef blob = Blob::Create(bytes);
    if (!blob) throw std::bad_alloc();
    return AddFile(std::move(blob), 0);
}

unsigned TMPRegisterPrivateData(void* data) {
    return Table().Add({{}, data, 0});
}

void* TMPGetPrivateData(unsigned id) noexcept {
    const auto entry = Table().Find(id);
    return entry ? entry->data : nullptr;
}

void TMPSetPrivateData(unsigned id, void* data) noexcept {
    Table().Update(id, [data](TempEntry& entry) {
        if (!entry.file) entry.data = data;
    });
}

unsigned TMPDuplicateTmpFile(unsigned id) {
    auto entry = Table().Find(id);
    if (!entry) return 0;
    if (entry->file) return AddFile(entry->file->Snapshot(), entry->tag);
    return Table().Add(std::move(*entry));
}

bool TMPDeleteTmpFile(unsigned id) noexcept {
    return Table().Remove(id);
}

void TMPSetTmpFileTag(unsigned id, unsigned tag) noexcept {
    Table().Update(id, [tag](TempEntry& entry) { entry.tag = tag; });
}

unsigned TMPGetTmpFileTag(unsigned id) noexcept {
    const auto entry = Table().Find(id);
    return entry ? entry->tag : 0;
}

std::unique_ptr<TmpStream> TMPOpenTmpFile(unsigned id, TmpMode mode) {
    auto entry = Table().Find(id);
    if (!entry || !entry->file) return nullptr;
    if (mode == TmpMode::Write) return std::make_unique<WritingStream>(std::move(entry->file));
    return std::make_unique<ReadingStream>(entry->file->Snapshot());
}

namespace host {
std::size_t LiveTmpEntries() noexcept {
    return Table().Count();
}
}  // namespace host
