#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "fom/options.h"

namespace command {

struct DemoRequest {
    static constexpr std::size_t kDefaultSample = 300;
    static constexpr std::size_t kDefaultSize = 512;

    std::vector<std::filesystem::path> paths;
    /// The folder that is written.
    std::filesystem::path output;
    bool force = false;
    bool all = false;                     ///< otherwise a sample
    std::size_t sample = kDefaultSample;  ///< drawings in it
    std::size_t jobs = 0;                 ///< renderers at once; 0: as many as there are cores
    std::size_t size = kDefaultSize;      ///< longer side of the pictures, in pixels
};

/// Imports drawings, saves their document, rewrites them from it in a new process, compares both versions as
/// the independent renderer draws them, and shows what came out. The exit code.
int RunDemo(const DemoRequest& request, Console& console);

}  // namespace command
