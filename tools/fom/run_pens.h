#pragma once

#include <filesystem>

#include "fom/options.h"
#include "fom/pen_request.h"

namespace command {

/// Tells how the pen follows the transformation, and draws it when `picture`, which `output` is for, is not
/// empty. The exit code.
int RunPens(const PenRequest& pens, const std::filesystem::path& picture, bool json, const Output& output,
            Console& console);

}  // namespace command
