#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "host/base/ref_ptr.h"

#include "base/mapped_file.h"

namespace host::detail {

class FlatBlob;
using FlatBlobRef = RefPtr<FlatBlob>;

/// Bytes of a fixed number that have an address and that several holders share: on the heap up to
/// Blob::kMemoryLimit, beyond it in a nameless temporary file that is mapped into memory. Read by any number
/// of threads; changed only through the sole reference.
class FlatBlob : public RefCounted {
public:
    /// `size` bytes of 0. Throws bad_alloc when there is no memory or no room on the disk: room is taken
    /// here, so that changing the bytes cannot fail.
    static FlatBlobRef CreateCleared(std::size_t size);
    /// A blob of its own with the same bytes. Throws as CreateCleared does.
    FlatBlobRef Clone() const;

    /// At the same address as long as the blob lives.
    std::span<const std::byte> GetBytes() const noexcept { return m_bytes; }
    /// The same for changing them. Requires the sole reference.
    std::span<std::byte> EditBytes() noexcept { return m_bytes; }

private:
    void TakeMemory(std::vector<std::byte> memory) noexcept;
    void TakeFile(OsFile file, std::size_t size);

    std::vector<std::byte> m_memory;
    MappedFile m_file;
    std::span<std::byte> m_bytes;  // of the one or the other
};

}  // namespace host::detail
