#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "host/base/export.h"

/// A document stream. Reading and writing never throw: a short read or a failed write clears the good flag,
/// which never comes back by itself, and the caller checks it. A cleared flag does not stop later calls from
/// trying. Used by one thread at a time.
class FOM_API AbstractFileStream {
public:
    virtual ~AbstractFileStream() = default;

    /// Bytes read; fewer than `size` clears the good flag and leaves the rest of `to` cleared to 0.
    std::size_t Read(void* to, std::size_t size) noexcept {
        if (size > m_ahead.size() || size == 0) return ReadMore(to, size);
        std::memcpy(to, m_ahead.data(), size);
        m_ahead = m_ahead.subspan(size);
        return size;
    }
    /// Bytes written; fewer than `size` clears the good flag.
    std::size_t Write(const void* from, std::size_t size) noexcept;
    /// Bytes left to read, where the stream knows.
    virtual std::optional<std::uint64_t> GetRemaining() const noexcept = 0;
    virtual std::uint64_t GetPosition() const noexcept = 0;

    bool IsGood() const noexcept { return m_good; }
    void SetGood(bool good) noexcept { m_good = good; }

    /// Version of the document in the stream as major * 100 + minor * 10 (12.50 is 1250); empty when not
    /// registered.
    std::optional<std::uint32_t> GetDocumentVersion() const noexcept { return m_version; }
    void RegisterDocumentVersion(std::optional<std::uint32_t> version) noexcept { m_version = version; }

protected:
    /// Bytes that lie in memory and are read next; Read takes them from here as long as they suffice. A
    /// stream that sets some counts them among those that are left.
    std::span<const std::byte> GetAhead() const noexcept { return m_ahead; }
    void SetAhead(std::span<const std::byte> bytes) noexcept { m_ahead = bytes; }

    /// Bytes moved, those that lie ahead first; fewer only at the end or on failure. Must not throw.
    virtual std::size_t DoRead(void* to, std::size_t size) noexcept = 0;
    virtual std::size_t DoWrite(const void* from, std::size_t size) noexcept = 0;

private:
    std::size_t ReadMore(void* to, std::size_t size) noexcept;

    std::span<const std::byte> m_ahead;
    std::optional<std::uint32_t> m_version;
    bool m_good = true;
};

/// A stream over growing memory: reads from the front, writes at the end. When memory runs out a write fails
/// whole. One that was moved from is empty.
class FOM_API MemoryFileStream final : public AbstractFileStream {
public:
    MemoryFileStream() = default;
    explicit MemoryFileStream(std::vector<std::byte> bytes) noexcept : m_bytes(std::move(bytes)) { Rewind(); }
    MemoryFileStream(MemoryFileStream&& other) noexcept;
    MemoryFileStream& operator=(MemoryFileStream&& other) noexcept;

    /// Valid until the next write.
    std::span<const std::byte> GetBytes() const noexcept { return m_bytes; }
    /// Reads from the first byte again.
    void Rewind() noexcept { SetAhead(m_bytes); }
    std::optional<std::uint64_t> GetRemaining() const noexcept override { return GetAhead().size(); }
    std::uint64_t GetPosition() const noexcept override { return m_bytes.size() - GetAhead().size(); }

protected:
    std::size_t DoRead(void* to, std::size_t size) noexcept override;
    std::size_t DoWrite(const void* from, std::size_t size) noexcept override;

private:
    std::vector<std::byte> m_bytes;
};
