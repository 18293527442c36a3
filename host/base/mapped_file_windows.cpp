#ifdef _WIN32

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include "base/mapped_file.h"

namespace host::detail {

// The file stays open: one that is deleted with its handle cannot go while a view of it is left.
MappedFile MappedFile::Map(OsFile file, std::size_t size, std::error_code& error) noexcept {
    MappedFile mapped;
    HANDLE const section =
        ::CreateFileMappingW(reinterpret_cast<HANDLE>(file.m_handle), nullptr, PAGE_READWRITE, 0, 0, nullptr);
    void* const start =
        section ? ::MapViewOfFile(section, FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, size) : nullptr;
    error = start ? std::error_code()
                  : std::error_code(static_cast<int>(::GetLastError()), std::system_category());
    if (section) ::CloseHandle(section);  // the view keeps it
    if (error) return mapped;
    mapped.m_file = std::move(file);
    mapped.m_bytes = {static_cast<std::byte*>(start), size};
    return mapped;
}

MappedFile::~MappedFile() {
    if (!m_bytes.empty()) ::UnmapViewOfFile(m_bytes.data());
}

}  // namespace host::detail

#endif
