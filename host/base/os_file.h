#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

namespace host::detail {

/// A file of the operating system, opened binary and read and written at given places. Closed on destruction.
/// Reading and writing at the same time is safe from any thread. What fails reports through the error code.
class OsFile {
public:
    OsFile() = default;
    OsFile(OsFile&& other) noexcept : m_handle(std::exchange(other.m_handle, kClosed)) {}
    OsFile& operator=(OsFile&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~OsFile() { Close(); }

    /// Regular files only; never waits for the other end of a pipe.
    static OsFile OpenForReading(const std::filesystem::path& path, std::error_code& error);
    /// An empty regular file, whether or not there was one.
    static OsFile OpenForWriting(const std::filesystem::path& path, std::error_code& error);
    /// Fails when there is one.
    static OsFile CreateNew(const std::filesystem::path& path, std::error_code& error);
    /// A file without a name in the temporary folder, gone with its handle.
    static OsFile CreateTemporary(std::error_code& error);

    bool IsOpen() const noexcept { return m_handle != kClosed; }
    std::uint64_t GetSize(std::error_code& error) const noexcept;
    /// Bytes read; fewer without an error means the end of the file.
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> to, std::error_code& error) const noexcept;
    /// Bytes written; fewer only with an error.
    std::size_t WriteAt(std::uint64_t offset, std::span<const std::byte> from,
                        std::error_code& error) const noexcept;
    /// Returns when the bytes are on the medium.
    void Flush(std::error_code& error) const noexcept;
    /// False when the system reports that something written was lost.
    bool Close() noexcept;

private:
    friend class MappedFile;

    using Handle = std::intptr_t;
    static constexpr Handle kClosed = -1;

    explicit OsFile(Handle handle) noexcept : m_handle(handle) {}
    static OsFile CheckedRegular(OsFile file, std::error_code& error);

    Handle m_handle = kClosed;
};

/// Gives `to` the permissions of `from`, where the system has them and as far as it lets us.
void CopyPermissions(const std::filesystem::path& from, const std::filesystem::path& to);

/// Makes a rename within `folder` last, where the system wants that said.
void FlushFolder(const std::filesystem::path& folder) noexcept;

}  // namespace host::detail
