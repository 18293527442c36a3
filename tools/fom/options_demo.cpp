#include <CLI/CLI.hpp>

#include "fom/command_line.h"
#include "fom/run_demo.h"

namespace command {
namespace {

constexpr const char* kDemoExamples = R"(Examples:
  fom demo drawings/ -o out/               a fixed sample of 300; look at out/index.html
  fom demo drawings/ -o out/ --all --force
  fom demo a.svg b.svg -o out/ --size 1024

The drawings are read into a document, which is saved. A new process loads it and repaints them from it
alone. rsvg-convert draws both versions, and their pixels are compared. Drawings that fail are named and the
others go on; the exit code tells whether every difference has a reason.
)";

constexpr std::size_t kMostJobs = 256;
constexpr std::size_t kMostDrawings = 1'000'000;
constexpr std::size_t kLeastSize = 16, kMostSize = 4096;

struct Values {
    std::vector<std::string> paths;
    std::string output;
    DemoRequest demo;

    Task Make() const {
        DemoRequest request = demo;
        request.paths.assign(paths.begin(), paths.end());
        request.output = output;
        // The demo looks after its folder by itself.
        return {.output = {}, .force = false, .run = [request](const Output&, Console& console, HeapGauge) {
                    return RunDemo(request, console);
                }};
    }
};

}  // namespace

void AddDemo(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    DemoRequest& demo = values->demo;
    CLI::App& app =
        line.Add("demo", "repaint drawings from a saved document and show that they look the same",
                 kDemoExamples, [values](std::string&) { return values->Make(); });
    AddNames(app, "PATH", values->paths, "SVG files, or folders of them").required();
    AddName(app, "-o,--output", values->output, "folder to write: a new one or an empty one").required();
    app.add_flag("--force", demo.force, "replace what a former demo wrote in the folder");
    app.add_flag("--all", demo.all, "all drawings instead of a sample");
    app.add_option("--sample", demo.sample, "drawings in the sample")
        ->check(CLI::Range(std::size_t{1}, kMostDrawings))
        ->capture_default_str();
    app.add_option("--jobs", demo.jobs, "renderers at once [as many as there are cores]")
        ->check(CLI::Range(std::size_t{1}, kMostJobs));
    app.add_option("--size", demo.size, "longer side of the pictures in pixels")
        ->check(CLI::Range(kLeastSize, kMostSize))
        ->capture_default_str();
}

}  // namespace command
