#include "host/stream/disk_file_stream.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <system_error>
#include <vector>

#include "base/os_file.h"

namespace {
constexpr std::size_t kBufferSize = std::size_t{1} << 16;
}

/// The file and the part of it that is in memory: [m_start, m_start + m_used), with the position in it. When
/// writing, the position is always at the end of that part and the part has not been written yet.
class DiskFileStream::File {
public:
    File(const std::filesystem::path& path, Mode mode) : m_mode(mode), m_buffer(kBufferSize) {
        std::error_code error;
        m_file = mode == Mode::Read ? host::detail::OsFile::OpenForReading(path, error)
                                    : host::detail::OsFile::OpenForWriting(path, error);
        if (m_file.IsOpen() && mode == Mode::Read) m_size = m_file.GetSize(error);
    }

    bool IsOpen() const noexcept { return m_file.IsOpen(); }
    Mode GetMode() const noexcept { return m_mode; }
    std::uint64_t Position() const noexcept { return m_start + m_at; }
    std::uint64_t Remaining() const noexcept { return m_size > Position() ? m_size - Position() : 0; }

    std::size_t Read(std::span<std::byte> to) noexcept {
        std::size_t done = 0;
        while (done < to.size()) {
            if (m_at == m_used && !Fill()) break;
            const std::size_t step = std::min(to.size() - done, m_used - m_at);
            std::memcpy(to.data() + done, m_buffer.data() + m_at, step);
            m_at += step;
            done += step;
        }
        return done;
    }

    std::size_t Write(std::span<const std::byte> from) noexcept {
        std::size_t done = 0;
        while (done < from.size()) {
            if (m_at == kBufferSize && !Flush()) break;
            const std::size_t step = std::min(from.size() - done, kBufferSize - m_at);
            std::memcpy(m_buffer.data() + m_at, from.data() + done, step);
            m_at += step;
            done += step;
        }
        return done;
    }

    bool Close() noexcept {
        const bool flushed = m_mode == Mode::Read || Flush();
        return m_file.Close() && flushed;
    }

private:
    bool Fill() noexcept {
        std::error_code error;
        m_start += m_used;
        m_at = 0;
        m_used = m_file.ReadAt(m_start, m_buffer, error);
        return m_used != 0;
    }

    bool Flush() noexcept {
        std::error_code error;
        const std::size_t done = m_file.WriteAt(m_start, std::span(m_buffer).first(m_at), error);
        if (done != m_at) return false;
        m_start += done;
        m_at = 0;
        return true;
    }

    Mode m_mode;
    host::detail::OsFile m_file;
    std::vector<std::byte> m_buffer;
    std::uint64_t m_size = 0;
    std::uint64_t m_start = 0;
    std::size_t m_at = 0;
    std::size_t m_used = 0;
};

DiskFileStream::DiskFileStream(const std::filesystem::path& path, Mode mode)
    : m_file(std::make_unique<File>(path, mode)) {
    if (!m_file->IsOpen()) SetGood(false);
}

DiskFileStream::~DiskFileStream() {
    Close();
}

bool DiskFileStream::IsOpen() const noexcept {
    return m_file->IsOpen();
}

bool DiskFileStream::Close() noexcept {
    if (m_file->IsOpen() && !m_file->Close()) SetGood(false);
    return IsGood();
}

std::optional<std::uint64_t> DiskFileStream::GetRemaining() const noexcept {
    if (m_file->GetMode() == Mode::Write) return std::nullopt;
    return m_file->Remaining();
}

std::uint64_t DiskFileStream::GetPosition() const noexcept {
    return m_file->Position();
}

std::size_t DiskFileStream::DoRead(void* to, std::size_t size) noexcept {
    if (!m_file->IsOpen() || m_file->GetMode() != Mode::Read) return 0;
    return m_file->Read({static_cast<std::byte*>(to), size});
}

std::size_t DiskFileStream::DoWrite(const void* from, std::size_t size) noexcept {
    if (!m_file->IsOpen() || m_file->GetMode() != Mode::Write) return 0;
    return m_file->Write({static_cast<const std::byte*>(from), size});
}
