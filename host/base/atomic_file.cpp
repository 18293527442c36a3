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

std::error_code WriteAndFlush(const detail::OsFile& file, std::span<const std::byte> bytes) noexcept {
    std::error_code code;
    file.WriteAt(0, bytes, code);
    if (!code) file.Flush(code);
    return code;
}

fs::path FollowLink(const fs::path& path) {
    std::error_code code;
    if (!fs::is_symlink(path, code)) return path;
    fs::path target = fs::canonical(path, code);
    if (code == std::errc::not_enough_memory) throw std::bad_alloc();
    return code ? path : target;
}

}  // namespace

bool SaveAtomically(const fs::path& path, std::span<const std::byte> bytes, Error& error) {
    const fs::path target = FollowLink(path);
    std::error_code code;
    const fs::file_status status = fs::status(target, code);
    if (fs::exists(status) && !fs::is_regular_file(status)) return Fail(error, path, 0, "not a regular file");

    const fs::path folder = target.parent_path();  // now: once it is renamed, nothing may fail
    StrayGuard stray(target);
    detail::OsFile file = detail::OsFile::CreateNew(stray.Path(), code);
    if (!file.IsOpen()) return Fail(error, path, 0, code);
    stray.Arm(true);
    if (fs::exists(status)) detail::CopyPermissions(target, stray.Path());
    code = WriteAndFlush(file, bytes);
    if (!file.Close() && !code) code = std::make_error_code(std::errc::io_error);
    if (!code) fs::rename(stray.Path(), target, code);
    if (code) return Fail(error, path, 0, code);
    stray.Arm(false);
    detail::FlushFolder(folder);
    return true;
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
