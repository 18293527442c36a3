#pragma once

#include <cstdint>
#include <limits>

#include "host/stream/file_stream.h"

namespace testing_support {

/// A stream over another one that goes wrong where a test says.
class FaultyStream final : public AbstractFileStream {
public:
    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

    /// `inner` outlives it; its document version is taken over.
    explicit FaultyStream(AbstractFileStream& inner) noexcept : m_inner(inner) {
        RegisterDocumentVersion(inner.GetDocumentVersion());
    }

    /// From this many bytes on nothing moves any more: a file that was cut, a full disk.
    void EndAfter(std::uint64_t bytes) noexcept { m_end = bytes; }
    /// Call number `n`, from 1, moves half of its bytes; those after it are whole again.
    void FailCall(std::uint64_t n) noexcept { m_failing = n; }
    /// As a stream that does not know its length.
    void HideRemaining() noexcept { m_hides = true; }
    std::uint64_t GetCalls() const noexcept { return m_calls; }

    std::optional<std::uint64_t> GetRemaining() const noexcept override;
    std::uint64_t GetPosition() const noexcept override { return m_moved; }

protected:
    std::size_t DoRead(void* to, std::size_t size) noexcept override;
    std::size_t DoWrite(const void* from, std::size_t size) noexcept override;

private:
    std::size_t Allowed(std::size_t size) noexcept;

    AbstractFileStream& m_inner;
    std::uint64_t m_end = kNever;
    std::uint64_t m_failing = 0;
    std::uint64_t m_calls = 0;
    std::uint64_t m_moved = 0;
    bool m_hides = false;
};

}  // namespace testing_support
