#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>

#include "fom/console.h"
#include "fom/heap_gauge.h"
#include "fom/output.h"

namespace command {

/// Exit codes of the command.
enum ExitCode : int { kSuccess = 0, kFailure = 1, kUsage = 2 };

/// What a command line asks for.
struct Task {
    /// Where the result goes: looked at before anything else is done. Empty: standard output, or somewhere
    /// that the task looks after by itself.
    std::filesystem::path output;
    bool force = false;
    /// Does it, with the library started; the exit code.
    std::function<int(const Output& output, Console& console, HeapGauge gauge)> run;
};

/// Reads a command line. Help, the version and mistakes are answered at once, on `out` and `err`: the result
/// is then empty and `exitCode` says how the command ends.
std::optional<Task> ParseOptions(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
                                 int& exitCode);

}  // namespace command
