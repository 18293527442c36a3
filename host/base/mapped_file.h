#pragma once

#include <cstddef>
#include <span>
#include <system_error>
#include <utility>

#include "base/os_file.h"

namespace host::detail {

/// The bytes of a file as memory, written to the file by being changed. The address stays the same until
/// destruction.
class MappedFile {
public:
    MappedFile() = default;
    MappedFile(MappedFile&& other) noexcept
        : m_file(std::move(other.m_file)), m_bytes(std::exchange(other.m_bytes, {})) {}
    MappedFile& operator=(MappedFile&& other) noexcept {
        std::swap(m_file, other.m_file);
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~MappedFile();

    /// Maps all `size` bytes, at least one, of a file that can be read and written. They have been written
    /// before: changing bytes that the file has no room for ends the process. Empty on an error.
    static MappedFile Map(OsFile file, std::size_t size, std::error_code& error) noexcept;

    std::span<std::byte> GetBytes() const noexcept { return m_bytes; }

private:
    OsFile m_file;  // where the mapping needs it open
    std::span<std::byte> m_bytes;
};

}  // namespace host::detail
