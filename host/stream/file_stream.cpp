#include "host/stream/file_stream.h"

#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

std::size_t AbstractFileStream::ReadMore(void* to, std::size_t size) noexcept {
    if (size == 0) return 0;
    const std::size_t done = DoRead(to, size);
    if (done < size) {
        m_good = false;
        std::memset(static_cast<std::byte*>(to) + done, 0, size - done);
    }
    return done;
}

std::size_t AbstractFileStream::Write(const void* from, std::size_t size) noexcept {
    if (size == 0) return 0;
    const std::size_t done = DoWrite(from, size);
    if (done < size) m_good = false;
    return done;
}

MemoryFileStream::MemoryFileStream(MemoryFileStream&& other) noexcept
    : AbstractFileStream(other), m_bytes(std::exchange(other.m_bytes, {})) {
    other.Rewind();
}

MemoryFileStream& MemoryFileStream::operator=(MemoryFileStream&& other) noexcept {
    if (this == &other) return *this;
    AbstractFileStream::operator=(other);
    m_bytes = std::exchange(other.m_bytes, {});
    other.Rewind();
    return *this;
}

std::size_t MemoryFileStream::DoRead(void* to, std::size_t) noexcept {
    const std::span<const std::byte> rest = GetAhead();
    if (!rest.empty()) std::memcpy(to, rest.data(), rest.size());
    SetAhead(rest.last(0));
    return rest.size();
}

std::size_t MemoryFileStream::DoWrite(const void* from, std::size_t size) noexcept {
    const auto* bytes = static_cast<const std::byte*>(from);
    const std::size_t read = m_bytes.size() - GetAhead().size();
    try {
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    } catch (const std::bad_alloc&) {
        return 0;
    } catch (const std::length_error&) {
        return 0;
    }
    SetAhead(std::span<const std::byte>(m_bytes).subspan(read));
    return size;
}
