#ifndef _WIN32

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

#include "base/os_file.h"

namespace host::detail {
namespace {

// One call of the system moves at most this much; some take no more than 2 GiB.
constexpr std::size_t kMaxStep = std::size_t{1} << 30;
constexpr int kNewFileMode = 0666;

int Descriptor(std::intptr_t handle) noexcept {
    return static_cast<int>(handle);
}

std::error_code LastError() noexcept {
    return {errno, std::system_category()};
}

std::intptr_t Opened(int descriptor, std::error_code& error) noexcept {
    error = descriptor < 0 ? LastError() : std::error_code();
    return descriptor;
}

bool FitsOffset(std::uint64_t offset, std::size_t size) noexcept {
    const auto limit = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());
    return offset <= limit && size <= limit - offset;
}

/// Repeats `step(done)` until all is moved; a step of 0 ends it, a negative one is an error unless it was
/// interrupted.
template <class Step>
std::size_t Transfer(std::size_t size, std::error_code& error, Step step) noexcept {
    error.clear();
    std::size_t done = 0;
    while (done < size) {
        const ssize_t moved = step(done, std::min(size - done, kMaxStep));
        if (moved == 0) break;
        if (moved > 0) {
            done += static_cast<std::size_t>(moved);
        } else if (errno != EINTR) {
            error = LastError();
            break;
        }
    }
    return done;
}

}  // namespace

OsFile OsFile::CheckedRegular(OsFile file, std::error_code& error) {
    if (!file.IsOpen()) return file;
    struct stat status;
    if (::fstat(Descriptor(file.m_handle), &status) != 0) {
        error = LastError();
        return {};
    }
    if (S_ISREG(status.st_mode)) return file;
    error = std::make_error_code(S_ISDIR(status.st_mode) ? std::errc::is_a_directory
                                                         : std::errc::invalid_argument);
    return {};
}

OsFile OsFile::OpenForReading(const std::filesystem::path& path, std::error_code& error) {
    return CheckedRegular(OsFile(Opened(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK), error)),
                          error);
}

OsFile OsFile::OpenForWriting(const std::filesystem::path& path, std::error_code& error) {
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK;
    OsFile file = CheckedRegular(OsFile(Opened(::open(path.c_str(), kFlags, kNewFileMode), error)), error);
    if (!file.IsOpen()) return file;
    if (::ftruncate(Descriptor(file.m_handle), 0) == 0) return file;
    error = LastError();
    return {};
}

OsFile OsFile::CreateNew(const std::filesystem::path& path, std::error_code& error) {
    return OsFile(Opened(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode), error));
}

OsFile OsFile::CreateTemporary(std::error_code& error) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) return {};
#ifdef O_TMPFILE
    OsFile nameless(Opened(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600), error));
    if (nameless.IsOpen()) return nameless;
#endif
    std::string name = (folder / "tmpXXXXXX").native();
    OsFile file(Opened(::mkstemp(name.data()), error));
    if (file.IsOpen()) ::unlink(name.c_str());
    return file;
}

std::uint64_t OsFile::GetSize(std::error_code& error) const noexcept {
    struct stat status;
    if (::fstat(Descriptor(m_handle), &status) != 0) {
        error = LastError();
        return 0;
    }
    error.clear();
    return static_cast<std::uint64_t>(status.st_size);
}

std::size_t OsFile::ReadAt(std::uint64_t offset, std::span<std::byte> to,
                           std::error_code& error) const noexcept {
    error.clear();
    if (!FitsOffset(offset, to.size())) return 0;
    return Transfer(to.size(), error, [&](std::size_t done, std::size_t step) {
        return ::pread(Descriptor(m_handle), to.data() + done, step, static_cast<off_t>(offset + done));
    });
}

std::size_t OsFile::WriteAt(std::uint64_t offset, std::span<const std::byte> from,
                            std::error_code& error) const noexcept {
    if (!FitsOffset(offset, from.size())) {
        error = std::make_error_code(std::errc::file_too_large);
        return 0;
    }
    return Transfer(from.size(), error, [&](std::size_t done, std::size_t step) {
        return ::pwrite(Descriptor(m_handle), from.data() + done, step, static_cast<off_t>(offset + done));
    });
}

void OsFile::Flush(std::error_code& error) const noexcept {
    error = ::fsync(Descriptor(m_handle)) == 0 ? std::error_code() : LastError();
}

bool OsFile::Close() noexcept {
    if (!IsOpen()) return true;
    return ::close(Descriptor(std::exchange(m_handle, kClosed))) == 0;
}

void CopyPermissions(const std::filesystem::path& from, const std::filesystem::path& to) {
    struct stat status;
    if (::stat(from.c_str(), &status) == 0) {
        [[maybe_unused]] const int best = ::chmod(to.c_str(), status.st_mode & 0777);
    }
}

void FlushFolder(const std::filesystem::path& folder) noexcept {
    const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    ::fsync(descriptor);
    ::close(descriptor);
}

}  // namespace host::detail

#endif
