#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/base/error.h"

namespace command {

/// What the rewriting tells of a drawing.
struct RewriteEntry {
    std::size_t shapes = 0;
    /// Of these, with paints from the document.
    std::size_t painted = 0;
    /// Names of what may show as a difference, and of what the drawing kept of its own.
    std::set<std::string> reasons, kept;
    /// Why there is no rewrite; empty when there is one.
    std::string fault;
};
/// By the name of the drawing.
using RewriteEntries = std::map<std::string, RewriteEntry>;

struct RewriteRequest {
    std::filesystem::path document;
    /// Where the drawings are looked for.
    std::vector<std::filesystem::path> sources;
    /// Where the rewrites go.
    std::filesystem::path folder;
    /// Where the process leaves its report, which is taken away again; nothing may be there.
    std::filesystem::path report;
};

/// Runs `fom rewrite` in a new process, which knows the paints from the document alone. Drawings that fail
/// are entries with a fault. Empty, with `error` filled, when there is no report.
std::optional<RewriteEntries> RewriteInNewProcess(const RewriteRequest& request, host::Error& error);

}  // namespace command
