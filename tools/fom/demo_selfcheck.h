#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "fom/demo_folder.h"
#include "fom/demo_result.h"

namespace command {

/// What the self-check works on.
struct SelfCheckRequest {
    const DemoFolder& folder;
    const std::vector<std::filesystem::path>& sources;
    /// The compared drawings, and their files by name.
    const std::vector<DemoDrawing>& drawings;
    const std::map<std::string, std::filesystem::path>& originals;
    std::size_t size;
};

/// Loads the document, changes the colour of one fill that is seen in a drawing that came out right, saves
/// that drawing's paints, and goes with them the way that all drawings went: it has passed when the
/// comparison finds the drawing outside the tolerance.
SelfCheck CheckSelf(const SelfCheckRequest& request);

}  // namespace command
