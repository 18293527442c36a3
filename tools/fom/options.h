#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <vector>

#include "fom/pen_request.h"

namespace command {

enum class Action { None, Import, Swatches, Pens };

/// What a command line asks for.
struct Options {
    static constexpr std::size_t kDefaultLimit = 400;

    Action action = Action::None;
    std::vector<std::filesystem::path> paths;
    /// Empty: standard output.
    std::filesystem::path output;
    bool force = false;
    bool json = false;
    std::size_t limit = kDefaultLimit;  ///< swatches that are drawn
    std::size_t columns = 0;            ///< 0: as many as fit a sheet of usual width
    PenRequest pens;
};

/// Exit codes of the command.
enum ExitCode : int { kSuccess = 0, kFailure = 1, kUsage = 2 };

/// Reads a command line. Help, the version and mistakes are answered at once, on `out` and `err`: the result
/// is then empty and `exitCode` says how the command ends.
std::optional<Options> ParseOptions(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                                    int& exitCode);

}  // namespace command
