#include <CLI/CLI.hpp>

#include "fom/command_line.h"
#include "fom/run_rewrite.h"

namespace command {
namespace {

constexpr const char* kExamples = R"(Examples:
  fom rewrite art.fomdoc drawings/ -o repainted/
  fom rewrite art.fomdoc drawings/ -o repainted/ --json report.json --force

The drawings must be those that the document was made of, byte for byte. What cannot be rewritten is named on
standard error; the others go on.
)";

struct Values {
    std::string document;
    std::vector<std::string> paths;
    std::string folder;
    std::string report;
    bool force = false;

    std::optional<Task> Read() const {
        RewriteOptions options{.document = document,
                               .paths = {paths.begin(), paths.end()},
                               .folder = folder,
                               .force = force,
                               .json = !report.empty()};
        return Task{.output = report,
                    .force = force,
                    .run = [options](const Output& to, Console& console, HeapGauge gauge) {
                        return RunRewrite(options, to, console, gauge);
                    }};
    }
};

}  // namespace

void AddRewrite(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app = line.Add("rewrite", "paint drawings from a document", kExamples,
                             [values](std::string&) { return values->Read(); });
    AddName(app, "DOCUMENT", values->document, "what \"fom import\" saved").required();
    AddNames(app, "PATH", values->paths, "the drawings that it was made of, or folders of them").required();
    AddOutput(app, values->folder, values->force, "folder for the rewritten drawings").required();
    AddName(app, "--json", values->report, "write a report as JSON to a file");
}

}  // namespace command
