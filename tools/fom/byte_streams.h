#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <stdexcept>
#include <vector>

#include "host/stream/file_stream.h"

namespace command {

/// Reads bytes that belong to somebody else.
class WindowStream final : public AbstractFileStream {
public:
    /// Shows other bytes, from their beginning; the stream is good then.
    void Show(std::span<const std::uint8_t> bytes) noexcept {
        m_bytes = bytes;
        m_at = 0;
        SetGood(true);
    }
    std::optional<std::uint64_t> GetRemaining() const noexcept override { return m_bytes.size() - m_at; }
    std::uint64_t GetPosition() const noexcept override { return m_at; }

protected:
    std::size_t DoRead(void* to, std::size_t size) noexcept override {
        const std::size_t step = std::min(size, m_bytes.size() - m_at);
        if (step != 0) std::memcpy(to, m_bytes.data() + m_at, step);
        m_at += step;
        return step;
    }
    std::size_t DoWrite(const void*, std::size_t) noexcept override { return 0; }

private:
    std::span<const std::uint8_t> m_bytes;
    std::size_t m_at = 0;
};

/// Appends to bytes that belong to somebody else.
class AppendStream final : public AbstractFileStream {
public:
    explicit AppendStream(std::vector<std::uint8_t>& bytes) noexcept : m_bytes(bytes) {}

    /// False when something is missing. Throws bad_alloc when that is why.
    bool IsWhole() const {
        if (m_noMemory) throw std::bad_alloc();
        return IsGood();
    }
    std::optional<std::uint64_t> GetRemaining() const noexcept override { return std::nullopt; }
    std::uint64_t GetPosition() const noexcept override { return m_bytes.size(); }

protected:
    std::size_t DoRead(void*, std::size_t) noexcept override { return 0; }
    std::size_t DoWrite(const void* from, std::size_t size) noexcept override {
        const auto* bytes = static_cast<const std::uint8_t*>(from);
        try {
            m_bytes.insert(m_bytes.end(), bytes, bytes + size);
            return size;
        } catch (const std::bad_alloc&) {
        } catch (const std::length_error&) {
        }
        m_noMemory = true;
        return 0;
    }

private:
    std::vector<std::uint8_t>& m_bytes;
    bool m_noMemory = false;
};

}  // namespace command
