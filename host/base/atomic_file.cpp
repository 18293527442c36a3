#include "host/base/atomic_file.h"

#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "host/base/guid.h"
#include "host/base/wstring.h"

#include "base/os_file.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kReadStep = std::size_t{1} << 16;
constexpr int kMostLinks = 40;

bool Fail(Error& error, const fs::path& path, std::uint64_t offset, std::string reason) {
    error = {ToUtf8(FromPath(path)), offset, 0, std::move(reason)};
    return false;
}

bool Fail(Error& error, const fs::path& path, std::uint64_t offset, const std::error_code& code) {
    return Fail(error, path, offset, code.message());
}

/// A name beside the target, removed again unless it has been renamed away.
class StrayGuard {
public:
    explicit StrayGuard(const fs::path& target)
        : m_path(target.parent_path() /
                 ToPath(L"." + VyrUtils::Guid::Generate().ToString().str() + L".tmp")) {}
    ~StrayGuard() {
        std::error_code ignored;
        if (m_armed) fs::remove(m_path, ignored);
    }
    StrayGuard(const StrayGuard&) = delete;
    StrayGuard& operator=(const StrayGuard&) = delete;

    const fs::path& Path() const noexcept { return m_path; }
    void Arm(bool armed) noexcept { m_armed = armed; }

private:
    fs::path m_path;
    bool m_armed = false;
};

/// Of the generic category, which no call of the system answers with.
std::error_code NotRegular() noexcept {
    return std::make_error_code(std::errc::invalid_argument);
}

bool IsOfProcesses(const fs::path& folder) {
    auto step = folder.begin();
    return step != folder.end() && *step == "/" && ++step != folder.end() && *step == "proc";
}

/// Where the name `path` leads in the end, whether or not something is there. A link among the system's own
/// names of open files is not a place: what it shows as its target may be anybody's.
std::optional<fs::path> FollowLinks(fs::path path, std::error_code& code) {
    for (int links = 0; fs::is_symlink(fs::symlink_status(path, code)); ++links) {
        code = std::make_error_code(std::errc::too_many_symbolic_link_levels);
        if (links == kMostLinks) return std::nullopt;
        const fs::path folder = fs::canonical(path.has_parent_path() ? path.parent_path() : ".", code);
        if (!code && IsOfProcesses(folder)) code = NotRegular();
        if (!code) path = folder / fs::read_symlink(path, code);
        if (code == std::errc::not_enough_memory) throw std::bad_alloc();
        if (code) return std::nullopt;
    }
    return path;
}

}  // namespace

class AtomicFile::Impl {
public:
    explicit Impl(const fs::path& path) : m_path(path) {
        const std::optional<fs::path> target = FollowLinks(path, m_code);
        if (target) Begin(*target);
    }

    bool Write(std::span<const std::byte> bytes) noexcept {
        if (!m_code) m_size += m_file.WriteAt(m_size, bytes, m_code);
        return !m_code;
    }
    std::uint64_t GetSize() const noexcept { return m_size; }

    bool Commit(Error& error) {
        if (m_stray && !m_code) m_file.Flush(m_code);
        if (!m_file.Close() && !m_code) m_code = std::make_error_code(std::errc::io_error);
        if (!m_code) fs::rename(m_stray->Path(), m_target, m_code);
        if (m_code == NotRegular()) return Fail(error, m_path, 0, "not a regular file");
        if (m_code) return Fail(error, m_path, 0, m_code);
        m_stray->Arm(false);
        detail::FlushFolder(m_folder);
        m_code = std::make_error_code(std::errc::bad_file_descriptor);  // once
        return true;
    }

private:
    void Begin(const fs::path& target) {
        const fs::file_status status = fs::status(target, m_code);
        m_code.clear();
        if (fs::exists(status) && !fs::is_regular_file(status)) {
            m_code = NotRegular();
            return;
        }
        m_target = target;
        m_folder = target.parent_path();  // now: once it is renamed, nothing may fail
        m_stray.emplace(target);
        m_file = detail::OsFile::CreateNew(m_stray->Path(), m_code);
        if (!m_file.IsOpen()) return;
        m_stray->Arm(true);
        if (fs::exists(status)) detail::CopyPermissions(target, m_stray->Path());
    }

    fs::path m_path, m_target, m_folder;
    std::optional<StrayGuard> m_stray;  // removed when the file below is closed
    detail::OsFile m_file;
    std::uint64_t m_size = 0;
    std::error_code m_code;  // of what failed first
};

AtomicFile::AtomicFile(const fs::path& path) : m_impl(std::make_unique<Impl>(path)) {}

AtomicFile::~AtomicFile() = default;

bool AtomicFile::Write(std::span<const std::byte> bytes) noexcept {
    return m_impl->Write(bytes);
}

std::uint64_t AtomicFile::GetSize() const noexcept {
    return m_impl->GetSize();
}

bool AtomicFile::Commit(Error& error) {
    return m_impl->Commit(error);
}

bool SaveAtomically(const fs::path& path, std::span<const std::byte> bytes, Error& error) {
    AtomicFile file(path);
    file.Write(bytes);
    return file.Commit(error);
}

std::optional<std::vector<std::byte>> ReadWholeFile(const fs::path& path, Error& error,
                                                    std::uint64_t largest) {
    std::error_code code;
    const detail::OsFile file = detail::OsFile::OpenForReading(path, code);
    if (!file.IsOpen()) {
        if (code == std::errc::invalid_argument)
            Fail(error, path, 0, "not a regular file");
        else
            Fail(error, path, 0, code);
        return std::nullopt;
    }
    // One byte more than the file says it has: a file that does not grow meanwhile needs no second step.
    const std::uint64_t size = file.GetSize(code);
    std::vector<std::byte> bytes;
    std::size_t step = size < bytes.max_size() ? static_cast<std::size_t>(size) + 1 : kReadStep;
    for (;;) {
        const std::size_t before = bytes.size();
        if (size > largest || before > largest) {
            Fail(error, path, 0, "too large");
            return std::nullopt;
        }
        bytes.resize(before + step);
        const std::size_t got = file.ReadAt(before, std::span(bytes).subspan(before), code);
        bytes.resize(before + got);
        if (code) {
            Fail(error, path, bytes.size(), code);
            return std::nullopt;
        }
        if (got < step) return bytes;
        step = kReadStep;
    }
}

}  // namespace host
