#include "support/faulty_stream.h"

#include <algorithm>

namespace testing_support {

std::optional<std::uint64_t> FaultyStream::GetRemaining() const noexcept {
    if (m_hides) return std::nullopt;
    const auto rest = m_inner.GetRemaining();
    return rest ? std::optional(std::min(*rest, m_end - m_moved)) : rest;
}

std::size_t FaultyStream::Allowed(std::size_t size) noexcept {
    if (++m_calls == m_failing) size /= 2;
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, m_end - m_moved));
}

std::size_t FaultyStream::DoRead(void* to, std::size_t size) noexcept {
    const std::size_t done = m_inner.Read(to, Allowed(size));
    m_moved += done;
    return done;
}

std::size_t FaultyStream::DoWrite(const void* from, std::size_t size) noexcept {
    const std::size_t done = m_inner.Write(from, Allowed(size));
    m_moved += done;
    return done;
}

}  // namespace testing_support
