#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

#include "fom/console.h"

namespace command {

/// Where the result of the command goes. Files are replaced as a whole; devices and pipes, and files under a
/// name for their being open ("/dev/stdout", "/dev/fd/3"), are written to as they are.
class Output {
public:
    /// An empty path is standard output.
    explicit Output(std::filesystem::path path);

    /// What stands where nothing may be replaced without `force`; empty when the result may be written.
    std::string Obstacle(bool force) const;
    /// False, after telling the console, when it fails.
    bool Write(std::span<const std::byte> bytes, Console& console) const;

private:
    enum class Kind : unsigned char { Standard, File, Stream };

    std::filesystem::path m_path;
    Kind m_kind;
};

}  // namespace command
