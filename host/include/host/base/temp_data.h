#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "host/base/export.h"

/// Temporary data: entries of bytes ("files") or of one private pointer, reached by a non-zero 32-bit
/// identifier that is never reused while its entry is alive. Bytes are copy-on-write: a duplicate costs no
/// copy until one of the two is written; contents above 1 MiB live in an unlinked file. All functions are
/// safe from any thread; one stream is used by one thread at a time. An identifier of 0 or of no entry is
/// accepted everywhere and does nothing.

/// A cursor over an entry's bytes. Stays usable after its entry has been deleted. A stream opened for reading
/// shows the bytes as they were when it was opened; one opened for writing reads and writes what the entry
/// holds now.
class FOM_API TmpStream {
public:
    virtual ~TmpStream() = default;
    /// Bytes read, 0 at the end and beyond it.
    virtual std::size_t Read(void* to, std::size_t size) = 0;
    /// Bytes written; fewer only when the disk is full. Always 0 on a stream opened for reading. Throws
    /// bad_alloc, and then nothing has changed.
    virtual std::size_t Write(const void* from, std::size_t size) = 0;
    /// Any position; a gap that a write beyond the end leaves is cleared.
    virtual void Seek(std::uint64_t position) = 0;
    virtual std::uint64_t GetSize() const = 0;
};

enum class TmpMode { Read, Write };

/// A new entry holding `bytes`. Throws bad_alloc, also when the disk has no room for large contents.
FOM_API unsigned TMPCreateTmpFile(std::span<const std::byte> bytes = {});
/// A new entry holding a pointer that the caller owns; deleting the entry does not touch it.
FOM_API unsigned TMPRegisterPrivateData(void* data);
/// Null when the entry holds bytes.
FOM_API void* TMPGetPrivateData(unsigned id) noexcept;
/// Does nothing to an entry that holds bytes.
FOM_API void TMPSetPrivateData(unsigned id, void* data) noexcept;
/// A new entry with the same content and tag (for private data: the same pointer; whoever counts references
/// raises the count first); 0 for 0 or an unknown identifier.
FOM_API unsigned TMPDuplicateTmpFile(unsigned id);
FOM_API bool TMPDeleteTmpFile(unsigned id) noexcept;
FOM_API void TMPSetTmpFileTag(unsigned id, unsigned tag) noexcept;
FOM_API unsigned TMPGetTmpFileTag(unsigned id) noexcept;
/// A stream at position 0; null when there is no such entry or it holds private data. Opening for writing
/// keeps what the entry holds; the first write gives the entry its own copy when the bytes are shared.
FOM_API std::unique_ptr<TmpStream> TMPOpenTmpFile(unsigned id, TmpMode mode = TmpMode::Read);

namespace host {
/// Entries alive now, for leak checks.
FOM_API std::size_t LiveTmpEntries() noexcept;
}  // namespace host
