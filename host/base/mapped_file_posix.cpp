#ifndef _WIN32

#include <cerrno>
#include <sys/mman.h>

#include "base/mapped_file.h"

namespace host::detail {

// The mapping keeps the file by itself; a descriptor for each one would soon use up those of the process.
MappedFile MappedFile::Map(OsFile file, std::size_t size, std::error_code& error) noexcept {
    MappedFile mapped;
    void* const start =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(file.m_handle), 0);
    error = start == MAP_FAILED ? std::error_code(errno, std::system_category()) : std::error_code();
    if (!error) mapped.m_bytes = {static_cast<std::byte*>(start), size};
    return mapped;
}

MappedFile::~MappedFile() {
    if (!m_bytes.empty()) ::munmap(m_bytes.data(), m_bytes.size());
}

}  // namespace host::detail

#endif
