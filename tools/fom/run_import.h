#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "fom/options.h"

namespace command {

struct ImportRequest {
    std::vector<std::filesystem::path> paths;
    /// Empty: standard output.
    std::filesystem::path output;
    bool json = false;
};

struct SwatchRequest {
    static constexpr std::size_t kDefaultLimit = 400;

    std::vector<std::filesystem::path> paths;
    std::filesystem::path output;
    std::size_t limit = kDefaultLimit;  ///< swatches that are drawn
    std::size_t columns = 0;            ///< 0: as many as fit a sheet of usual width
};

// Both return the exit code.
int RunImport(const ImportRequest& request, const Output& output, Console& console, HeapGauge gauge);
int RunSwatches(const SwatchRequest& request, const Output& output, Console& console, HeapGauge gauge);

}  // namespace command
