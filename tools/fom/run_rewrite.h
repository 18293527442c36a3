#pragma once

#include <filesystem>
#include <vector>

#include "fom/options.h"

namespace command {

struct RewriteOptions {
    std::filesystem::path document;
    /// Where its drawings are.
    std::vector<std::filesystem::path> paths;
    /// Where the rewritten ones go.
    std::filesystem::path folder;
    bool force = false;
    bool json = false;  ///< the result is a report for programs
};

/// Returns the exit code.
int RunRewrite(const RewriteOptions& options, const Output& output, Console& console, HeapGauge gauge);

}  // namespace command
