#include "base/blob.h"

#include <algorithm>
#include <memory>
#include <new>

namespace host::detail {
namespace {

constexpr std::size_t kCopyStep = std::size_t{1} << 16;

/// A temporary file for what does not fit in memory; closed when there is none to be had.
OsFile NewSpillFile() {
    std::error_code error;
    return OsFile::CreateTemporary(error);
}

}  // namespace

BlobRef Blob::Create(std::span<const std::byte> bytes) {
    BlobRef blob = BlobRef::Adopt(new Blob);
    if (bytes.size() <= kMemoryLimit) {
        blob->m_memory.assign(bytes.begin(), bytes.end());
        return blob;
    }
    blob->m_file = NewSpillFile();
    if (!blob->m_file.IsOpen() || blob->WriteFile(0, bytes) != bytes.size()) return {};
    return blob;
}

BlobRef Blob::Clone() const {
    if (!m_file.IsOpen()) return Create(m_memory);
    BlobRef blob = BlobRef::Adopt(new Blob);
    blob->m_file = NewSpillFile();
    if (!blob->m_file.IsOpen()) return {};
    std::vector<std::byte> step(kCopyStep);
    for (std::uint64_t at = 0; at < m_fileSize;) {
        const std::size_t got = Read(at, step);
        if (got == 0 || blob->WriteFile(at, std::span(step).first(got)) != got) return {};
        at += got;
    }
    return blob;
}

std::size_t Blob::Read(std::uint64_t position, std::span<std::byte> to) const noexcept {
    const std::uint64_t size = GetSize();
    if (position >= size) return 0;
    to = to.first(static_cast<std::size_t>(std::min<std::uint64_t>(to.size(), size - position)));
    if (m_file.IsOpen()) {
        std::error_code error;
        return m_file.ReadAt(position, to, error);
    }
    std::copy_n(m_memory.begin() + static_cast<std::ptrdiff_t>(position), to.size(), to.begin());
    return to.size();
}

std::size_t Blob::Write(std::uint64_t position, std::span<const std::byte> from) {
    if (from.empty()) return 0;
    if (!m_file.IsOpen()) {
        if (position <= kMemoryLimit && from.size() <= kMemoryLimit - position)
            return WriteMemory(static_cast<std::size_t>(position), from);
        if (!MoveToFile()) return 0;
    }
    return WriteFile(position, from);
}

std::size_t Blob::WriteMemory(std::size_t position, std::span<const std::byte> from) {
    const std::size_t end = position + from.size();
    if (end > m_memory.capacity())
        m_memory.reserve(std::min(std::max(end, 2 * m_memory.capacity()), kMemoryLimit));
    if (end > m_memory.size()) m_memory.resize(end);
    std::copy(from.begin(), from.end(), m_memory.begin() + static_cast<std::ptrdiff_t>(position));
    return from.size();
}

std::size_t Blob::WriteFile(std::uint64_t position, std::span<const std::byte> from) noexcept {
    std::error_code error;
    const std::size_t done = m_file.WriteAt(position, from, error);
    if (done != 0) m_fileSize = std::max(m_fileSize, position + done);
    return done;
}

bool Blob::MoveToFile() {
    OsFile file = NewSpillFile();
    std::error_code error;
    if (!file.IsOpen() || file.WriteAt(0, m_memory, error) != m_memory.size()) return false;
    m_file = std::move(file);
    m_fileSize = m_memory.size();
    std::vector<std::byte>().swap(m_memory);
    return true;
}

}  // namespace host::detail
