#ifdef _WIN32

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <algorithm>
#include <limits>
#include <windows.h>

#include "host/base/guid.h"

#include "base/os_file.h"

namespace host::detail {
namespace {

constexpr std::size_t kMaxStep = std::size_t{1} << 30;

std::error_code LastError() noexcept {
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

HANDLE Native(std::intptr_t handle) noexcept {
    return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t Opened(const std::filesystem::path& path, DWORD access, DWORD share, DWORD disposition,
                     DWORD flags, std::error_code& error) noexcept {
    HANDLE handle = ::CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr);
    error = handle == INVALID_HANDLE_VALUE ? LastError() : std::error_code();
    return reinterpret_cast<std::intptr_t>(handle);
}

OVERLAPPED At(std::uint64_t offset) noexcept {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFFu);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

bool FitsOffset(std::uint64_t offset, std::size_t size) noexcept {
    constexpr auto kLimit = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return offset <= kLimit && size <= kLimit - offset;
}

}  // namespace

OsFile OsFile::CheckedRegular(OsFile file, std::error_code& error) {
    if (!file.IsOpen() || ::GetFileType(Native(file.m_handle)) == FILE_TYPE_DISK) return file;
    error = std::make_error_code(std::errc::invalid_argument);
    return {};
}

OsFile OsFile::OpenForReading(const std::filesystem::path& path, std::error_code& error) {
    return CheckedRegular(OsFile(Opened(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, error)),
                          error);
}

OsFile OsFile::OpenForWriting(const std::filesystem::path& path, std::error_code& error) {
    return CheckedRegular(OsFile(Opened(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, error)),
                          error);
}

OsFile OsFile::CreateNew(const std::filesystem::path& path, std::error_code& error) {
    return OsFile(Opened(path, GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, error));
}

OsFile OsFile::CreateTemporary(std::error_code& error) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) return {};
    const auto name = VyrUtils::Guid::Generate().ToString();
    return OsFile(Opened(folder / (name.str() + L".tmp"), GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW,
                         FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, error));
}

std::uint64_t OsFile::GetSize(std::error_code& error) const noexcept {
    LARGE_INTEGER size{};
    error = ::GetFileSizeEx(Native(m_handle), &size) ? std::error_code() : LastError();
    return error ? 0 : static_cast<std::uint64_t>(size.QuadPart);
}

std::size_t OsFile::ReadAt(std::uint64_t offset, std::span<std::byte> to,
                           std::error_code& error) const noexcept {
    error.clear();
    if (!FitsOffset(offset, to.size())) return 0;
    std::size_t done = 0;
    while (done < to.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD moved = 0;
        const auto step = static_cast<DWORD>(std::min(to.size() - done, kMaxStep));
        if (!::ReadFile(Native(m_handle), to.data() + done, step, &moved, &place)) {
            if (::GetLastError() != ERROR_HANDLE_EOF) error = LastError();
            break;
        }
        if (moved == 0) break;
        done += moved;
    }
    return done;
}

std::size_t OsFile::WriteAt(std::uint64_t offset, std::span<const std::byte> from,
                            std::error_code& error) const noexcept {
    error.clear();
    if (!FitsOffset(offset, from.size())) {
        error = std::make_error_code(std::errc::file_too_large);
        return 0;
    }
    std::size_t done = 0;
    while (done < from.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD moved = 0;
        const auto step = static_cast<DWORD>(std::min(from.size() - done, kMaxStep));
        if (!::WriteFile(Native(m_handle), from.data() + done, step, &moved, &place) || moved == 0) {
            error = LastError();
            break;
        }
        done += moved;
    }
    return done;
}

void OsFile::Flush(std::error_code& error) const noexcept {
    error = ::FlushFileBuffers(Native(m_handle)) ? std::error_code() : LastError();
}

bool OsFile::Close() noexcept {
    if (!IsOpen()) return true;
    return ::CloseHandle(Native(std::exchange(m_handle, kClosed))) != 0;
}

// Access lists are inherited from the folder, and a read-only target cannot be replaced anyway.
void CopyPermissions(const std::filesystem::path&, const std::filesystem::path&) {}

void FlushFolder(const std::filesystem::path&) noexcept {}

}  // namespace host::detail

#endif
