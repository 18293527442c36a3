#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace command {

/// Which file a path leads to, through links, whatever its name.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

/// Empty when there is no such file or it may not be looked at.
std::optional<FileIdentity> IdentifyFile(const std::filesystem::path& path);

}  // namespace command
