#pragma once

#include <filesystem>
#include <memory>

#include "host/base/export.h"
#include "host/stream/file_stream.h"

/// A buffered stream over a regular file, from its first byte on: for reading one that is there, or for
/// writing one from nothing. What cannot be opened is a stream that is not good from the start and moves no
/// bytes. Only the constructor throws, and only bad_alloc.
class FOM_API DiskFileStream final : public AbstractFileStream {
public:
    enum class Mode { Read, Write };

    DiskFileStream(const std::filesystem::path& path, Mode mode);
    /// Closes; who must know whether everything was written calls Close first.
    ~DiskFileStream() override;
    DiskFileStream(const DiskFileStream&) = delete;
    DiskFileStream& operator=(const DiskFileStream&) = delete;

    bool IsOpen() const noexcept;
    /// Writes what is still in the buffer and closes the file. Returns whether the stream is good then. A
    /// closed stream moves no bytes.
    bool Close() noexcept;

    /// Known when reading: up to the size that the file had when it was opened.
    std::optional<std::uint64_t> GetRemaining() const noexcept override;
    std::uint64_t GetPosition() const noexcept override;

protected:
    std::size_t DoRead(void* to, std::size_t size) noexcept override;
    std::size_t DoWrite(const void* from, std::size_t size) noexcept override;

private:
    class File;
    std::unique_ptr<File> m_file;
};
