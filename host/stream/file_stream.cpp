#include "host/stream/file_stream.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

std::size_t AbstractFileStream::Read(void* to, std::size_t size) noexcept {
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

std::size_t MemoryFileStream::DoRead(void* to, std::size_t size) noexcept {
    const std::size_t step = std::min(size, m_bytes.size() - m_read);
    if (step != 0) std::memcpy(to, m_bytes.data() + m_read, step);
    m_read += step;
    return step;
}

std::size_t MemoryFileStream::DoWrite(const void* from, std::size_t size) noexcept {
    const auto* bytes = static_cast<const std::byte*>(from);
    try {
        m_bytes.insert(m_bytes.end(), bytes, bytes + size);
    } catch (const std::bad_alloc&) {
        return 0;
    } catch (const std::length_error&) {
        return 0;
    }
    return size;
}
