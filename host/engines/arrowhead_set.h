#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "engines/memory_block.h"

namespace host {

/// Arrowheads in their order, and what is wrong with the file that some come from.
struct ArrowheadSet {
    std::vector<MemoryBlock> blocks;
    std::vector<std::wstring> warnings;  ///< each one line: file, line and reason
};

/// The built-in arrowheads and those of the first of `files` that exists. What cannot be read of it is left
/// out, with a warning; at most a dozen warnings. Throws bad_alloc.
ArrowheadSet LoadArrowheads(std::span<const std::filesystem::path> files);

}  // namespace host
