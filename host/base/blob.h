#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/base/ref_ptr.h"

#include "base/os_file.h"

namespace host::detail {

class Blob;
using BlobRef = RefPtr<Blob>;

/// Bytes that several holders share: in memory up to a limit, beyond it in a nameless temporary file, and
/// back in memory never. Read by any number of threads; written only through the sole reference.
class Blob : public RefCounted {
public:
    static constexpr std::size_t kMemoryLimit = std::size_t{1} << 20;

    /// Null when the bytes need a file and there is no room for it. Throws bad_alloc.
    static BlobRef Create(std::span<const std::byte> bytes);
    /// A blob of its own with the same bytes, as Create does.
    BlobRef Clone() const;

    std::uint64_t GetSize() const noexcept { return m_file.IsOpen() ? m_fileSize : m_memory.size(); }
    /// Bytes read, fewer at the end or when the disk fails.
    std::size_t Read(std::uint64_t position, std::span<std::byte> to) const noexcept;
    /// Writes over and at the end; a gap before `position` is cleared. Bytes written, fewer only when the
    /// disk is full. Throws bad_alloc, and then nothing has changed. Requires the sole reference.
    std::size_t Write(std::uint64_t position, std::span<const std::byte> from);

private:
    bool MoveToFile();
    std::size_t WriteMemory(std::size_t position, std::span<const std::byte> from);
    std::size_t WriteFile(std::uint64_t position, std::span<const std::byte> from) noexcept;

    std::vector<std::byte> m_memory;
    OsFile m_file;
    std::uint64_t m_fileSize = 0;
};

}  // namespace host::detail
