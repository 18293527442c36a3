#include "fom/file_identity.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/stat.h>
#endif

namespace command {

#ifdef _WIN32

std::optional<FileIdentity> IdentifyFile(const std::filesystem::path& path) {
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), 0, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return std::nullopt;
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = GetFileInformationByHandle(file, &information) != 0;
    CloseHandle(file);
    if (!known) return std::nullopt;
    const std::uint64_t high = information.nFileIndexHigh;
    return FileIdentity{information.dwVolumeSerialNumber, high << 32 | information.nFileIndexLow};
}

#else

std::optional<FileIdentity> IdentifyFile(const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

#endif

}  // namespace command
