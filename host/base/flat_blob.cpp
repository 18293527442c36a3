#include "base/flat_blob.h"

#include <algorithm>
#include <new>

#include "base/blob.h"

namespace host::detail {
namespace {

constexpr std::size_t kClearStep = std::size_t{1} << 16;

OsFile NewFile() {
    std::error_code error;
    OsFile file = OsFile::CreateTemporary(error);
    if (!file.IsOpen()) throw std::bad_alloc();
    return file;
}

void Write(const OsFile& file, std::size_t position, std::span<const std::byte> bytes) {
    std::error_code error;
    if (file.WriteAt(position, bytes, error) != bytes.size()) throw std::bad_alloc();
}

}  // namespace

FlatBlobRef FlatBlob::CreateCleared(std::size_t size) {
    FlatBlobRef blob = FlatBlobRef::Adopt(new FlatBlob);
    if (size <= Blob::kMemoryLimit) {
        blob->TakeMemory(std::vector<std::byte>(size));
        return blob;
    }
    OsFile file = NewFile();
    const std::vector<std::byte> zeros(kClearStep);
    for (std::size_t at = 0; at < size; at += zeros.size())
        Write(file, at, std::span(zeros).first(std::min(zeros.size(), size - at)));
    blob->TakeFile(std::move(file), size);
    return blob;
}

FlatBlobRef FlatBlob::Clone() const {
    FlatBlobRef blob = FlatBlobRef::Adopt(new FlatBlob);
    if (m_file.GetBytes().empty()) {
        blob->TakeMemory(m_memory);
        return blob;
    }
    OsFile file = NewFile();
    Write(file, 0, m_bytes);
    blob->TakeFile(std::move(file), m_bytes.size());
    return blob;
}

void FlatBlob::TakeMemory(std::vector<std::byte> memory) noexcept {
    m_memory = std::move(memory);
    m_bytes = m_memory;
}

void FlatBlob::TakeFile(OsFile file, std::size_t size) {
    std::error_code error;
    m_file = MappedFile::Map(std::move(file), size, error);
    if (error) throw std::bad_alloc();
    m_bytes = m_file.GetBytes();
}

}  // namespace host::detail
