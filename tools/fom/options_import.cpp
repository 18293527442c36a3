#include <CLI/CLI.hpp>

#include "fom/command_line.h"
#include "fom/run_import.h"

namespace command {
namespace {

constexpr const char* kImportExamples = R"(Examples:
  fom import drawings/                     all ".svg" files in the folder and below
  fom import a.svg b.svg                   as one document
  fom import --json drawings/ -o report.json
  fom import drawings/ -o art.fomdoc       the document; the report goes to standard output

A drawing with an error contributes nothing and is named on standard error; the others go on.
)";

constexpr const char* kSwatchesExamples = R"(Examples:
  fom swatches drawings/ -o sheet.png
  fom swatches art.fomdoc -o sheet.png
  fom swatches drawings/ -o sheet.png --limit 100 --columns 10 --force
)";

constexpr std::size_t kMostSwatches = 100'000;
constexpr std::size_t kMostColumns = 1000;

struct Values {
    std::vector<std::string> paths;
    std::string output;
    bool force = false;
    ImportRequest import;
    SwatchRequest swatches;

    template <class Request>
    Task TaskOf(Request request, int (*run)(const Request&, const Output&, Console&, HeapGauge)) const {
        request.paths.assign(paths.begin(), paths.end());
        request.output = output;
        return {.output = output,
                .force = force,
                .run = [request, run](const Output& to, Console& console, HeapGauge gauge) {
                    return run(request, to, console, gauge);
                }};
    }
};

}  // namespace

void AddImport(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app = line.Add("import", "read drawings and report what they are painted with", kImportExamples,
                             [values](std::string&) { return values->TaskOf(values->import, RunImport); });
    AddNames(app, "PATH", values->paths, "SVG files, or folders of them").required();
    app.add_flag("--json", values->import.json, "report as JSON");
    AddOutput(app, values->output, values->force,
              "file for the report or, called \".fomdoc\", for the document");
}

void AddSwatches(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app = line.Add(
        "swatches", "draw the distinct fills and outlines of drawings as a labelled sheet", kSwatchesExamples,
        [values](std::string&) { return values->TaskOf(values->swatches, RunSwatches); });
    AddNames(app, "PATH", values->paths, "SVG files, or folders of them; or one document").required();
    AddOutput(app, values->output, values->force, "PNG file to draw").required();
    app.add_option("--limit", values->swatches.limit,
                   "draw at most so many fills and outlines: the most used, some of every kind")
        ->check(CLI::Range(std::size_t{1}, kMostSwatches))
        ->capture_default_str();
    app.add_option("--columns", values->swatches.columns, "swatches in a row")
        ->check(CLI::Range(std::size_t{1}, kMostColumns));
}

}  // namespace command
