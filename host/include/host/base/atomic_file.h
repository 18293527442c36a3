#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "host/base/error.h"
#include "host/base/export.h"

namespace host {

/// Saves `bytes` as the whole content of `path`: into a new file beside it, flushed, then renamed over it.
/// Whoever opens `path` meanwhile, or after a crash, finds the old content or the new, never a mixture. A
/// symbolic link is followed, also to where nothing is yet; permissions of an existing file are kept. Returns
/// false and fills `error` when it fails: the old file is then as it was and nothing is left beside it. What
/// exists and is not a regular file is not replaced, nor is a file under a name for its being open
/// ("/dev/stdout"). Throws bad_alloc only, likewise without a trace.
FOM_API bool SaveAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes,
                            Error& error);

/// SaveAtomically for content that comes in pieces. Unless it is committed the file at `path` stays as it is
/// and nothing is left beside it. One thread.
class FOM_API AtomicFile {
public:
    /// Throws bad_alloc only. What cannot be begun cannot be written to either.
    explicit AtomicFile(const std::filesystem::path& path);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// Appends. False when that failed, or anything before.
    bool Write(std::span<const std::byte> bytes) noexcept;
    /// Bytes written so far.
    std::uint64_t GetSize() const noexcept;
    /// Puts all that was written in the place of the old file, once. False, with `error` filled, when that or
    /// anything before failed. Throws bad_alloc only, likewise without a trace.
    bool Commit(Error& error);

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

/// What ReadWholeFile takes at the most unless it is told otherwise.
inline constexpr std::uint64_t kLargestWholeFile = std::uint64_t{512} << 20;

/// The content of a regular file. Empty, with `error` filled, when it cannot be read, has more than `largest`
/// bytes or is something else (a folder, a device, a pipe). Throws bad_alloc only.
FOM_API std::optional<std::vector<std::byte>> ReadWholeFile(const std::filesystem::path& path, Error& error,
                                                            std::uint64_t largest = kLargestWholeFile);

}  // namespace host
