#include "fom/output.h"

#include <fstream>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>

#include "host/base/atomic_file.h"

#include "fom/path_text.h"

namespace command {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

/// The number that `path` has as another name of something this process has open; empty when it has not.
std::string DescriptorOf(fs::path path) {
    std::error_code failed;
    const fs::path open = fs::canonical("/proc/self/fd", failed);
    for (int links = 0; !failed && links < kMostLinks; ++links) {
        const fs::path folder = fs::canonical(path.has_parent_path() ? path.parent_path() : ".", failed);
        if (!failed && folder == open) return path.filename().string();
        if (!failed) path = folder / fs::read_symlink(path, failed);
    }
    return {};
}

bool WriteStream(const fs::path& path, std::span<const std::byte> bytes) {
    // Nothing is cut off: what is open may hold what others wrote.
    std::ofstream stream(path, std::ios::binary | std::ios::app);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

}  // namespace

Output::Output(fs::path path) : m_path(std::move(path)), m_kind(Kind::File) {
    const std::string descriptor = m_path.empty() ? "1" : DescriptorOf(m_path);
    std::error_code unknown;
    const fs::file_type type = fs::status(m_path, unknown).type();
    if (descriptor == "1") {
        m_kind = Kind::Standard;
    } else if (!descriptor.empty() || type == fs::file_type::character || type == fs::file_type::fifo) {
        m_kind = Kind::Stream;
    }
}

std::string Output::Obstacle(bool force) const {
    std::error_code unknown;
    if (m_kind != Kind::File || !fs::exists(m_path, unknown)) return {};
    if (fs::is_directory(m_path, unknown)) return "is a folder";
    return force ? "" : "exists already; --force overwrites";
}

bool Output::Write(std::span<const std::byte> bytes, Console& console) const {
    if (m_kind == Kind::Standard) {
        console.Out().write(reinterpret_cast<const char*>(bytes.data()),
                            static_cast<std::streamsize>(bytes.size()));
        return console.Deliver();
    }
    host::Error error{.what = PathText(m_path), .offset = 0, .line = 0, .reason = "cannot be written"};
    if (m_kind == Kind::File ? host::SaveAtomically(m_path, bytes, error) : WriteStream(m_path, bytes))
        return true;
    console.Fail(error);
    return false;
}

}  // namespace command
