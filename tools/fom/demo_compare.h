#pragma once

#include <cstddef>
#include <filesystem>

#include "fom/demo_render.h"
#include "fom/demo_result.h"

namespace command {

/// How drawings are compared.
struct CompareOptions {
    std::size_t size = 512;  ///< longer side of the pictures, in pixels
    std::filesystem::path pictures;
    /// Otherwise those of identical drawings are not written.
    bool keepsIdentical = true;
};

/// Draws the original and the rewrite, compares them, writes their pictures as `name`-before.png and so on,
/// and fills in what the comparison tells of the drawing. Any thread, for different drawings. Throws, also
/// runtime_error when a picture cannot be written.
void CompareDrawing(const std::filesystem::path& original, const std::filesystem::path& rewrite,
                    const std::string& name, const CompareOptions& options, DemoDrawing& drawing);

/// Writes the pictures of two renderings and of their difference. Throws runtime_error when it fails.
void WritePictures(const Rendering& before, const Rendering& after, const std::string& name,
                   const std::filesystem::path& folder);

}  // namespace command
