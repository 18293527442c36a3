#include "fom/demo_render.h"

#include <chrono>
#include <utility>

#include "fom/child_process.h"
#include "fom/surface_png.h"

namespace command {
namespace {

constexpr const char* kRenderer = "rsvg-convert";
constexpr std::chrono::seconds kLimit{20};

}  // namespace

bool CheckRenderer(host::Error& error) {
    const ChildResult result =
        RunChild({.program = kRenderer, .arguments = {"--version"}, .input = {}, .limit = kLimit});
    if (result.Succeeded()) return true;
    error = {.what = kRenderer,
             .offset = 0,
             .line = 0,
             .reason = DescribeEnd(result) + "; the Debian package librsvg2-bin has it"};
    return false;
}

Rendering RenderDrawing(const std::filesystem::path& drawing, std::size_t size) {
    const std::string side = std::to_string(size);
    // From standard input, so that it has no folder in which to find other files.
    ChildResult result =
        RunChild({.program = kRenderer,
                  .arguments = {"--keep-aspect-ratio", "--width", side, "--height", side, "--format", "png"},
                  .input = drawing,
                  .limit = kLimit});
    Rendering rendering;
    if (!result.Succeeded()) {
        rendering.fault = DescribeEnd(result);
        return rendering;
    }
    rendering.picture = DecodePng(result.output);
    if (!rendering.picture) {
        rendering.fault = "the renderer's picture cannot be decoded";
        return rendering;
    }
    rendering.png = std::move(result.output);
    return rendering;
}

}  // namespace command
