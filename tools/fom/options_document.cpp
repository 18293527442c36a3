#include <CLI/CLI.hpp>

#include "fom/command_line.h"
#include "fom/run_document.h"

namespace command {
namespace {

constexpr const char* kInspectExamples = R"(Examples:
  fom inspect art.fomdoc                       head, blocks and what they hold
  fom inspect art.fomdoc --fill 12 --hex       one record, its sections and its bytes
  fom inspect art.fomdoc --drawing icons/a.svg

Fills, outlines and shapes are numbered from 0. What can be read of a damaged document is shown.
)";

constexpr const char* kVerifyExamples = R"(Examples:
  fom verify art.fomdoc
  fom verify --json art.fomdoc

Each finding is one line with the offset in the file; without any the exit code is 0.
)";

constexpr const char* kStatsExamples = R"(Examples:
  fom stats art.fomdoc
  fom stats --json art.fomdoc
)";

constexpr const char* kConvertExamples = R"(Examples:
  fom convert art.fomdoc -o old.fomdoc --document-version 12.0
  fom convert old.fomdoc -o art.fomdoc --document-version current --force

Tells which fields of how many records the version has no place for.
)";

constexpr const char* kRecoverExamples = R"(Examples:
  fom recover damaged.fomdoc -o whole.fomdoc

Writes what can be read of a damaged document and tells what is missing.
)";

struct Values {
    std::string path, output;
    bool force = false;
    DocumentRequest request;

    Task MakeTask(int (*run)(const DocumentRequest&, Console&)) const {
        DocumentRequest asked = request;
        asked.path = path;
        asked.output = output;
        return {
            .output = output,
            .force = force,
            .run = [asked, run](const Output&, Console& console, HeapGauge) { return run(asked, console); }};
    }
};

using Run = int (*)(const DocumentRequest&, Console&);

CLI::App& AddSubcommand(CommandLine& line, const std::shared_ptr<Values>& values, const char* name,
                        const char* help, const char* examples, Run run) {
    CLI::App& app =
        line.Add(name, help, examples, [values, run](std::string&) { return values->MakeTask(run); });
    AddName(app, "FILE", values->path, "the document").required();
    app.add_flag("--json", values->request.json, "as JSON");
    return app;
}

void AddInspect(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app =
        AddSubcommand(line, values, "inspect", "look into a document file", kInspectExamples, RunInspect);
    InspectChoice& choice = values->request.choice;
    CLI::Option* fill = app.add_option("--fill", choice.fill, "the fill of that number");
    CLI::Option* outline = app.add_option("--outline", choice.outline, "the outline of that number");
    CLI::Option* drawing =
        app.add_option("--drawing", choice.drawing, "the drawing of that name, and its shapes");
    fill->excludes(outline)->excludes(drawing);
    outline->excludes(drawing);
    app.add_flag("--hex", choice.hex, "the bytes of the fill or outline too");
}

void AddConvert(CommandLine& line) {
    const std::map<std::string, DocumentVersion> versions{{"12.0", DocumentVersion::V1200},
                                                          {"12.5", DocumentVersion::V1250},
                                                          {"current", DocumentVersion::Current}};
    const auto values = std::make_shared<Values>();
    CLI::App& app = AddSubcommand(line, values, "convert", "write a document in another version",
                                  kConvertExamples, RunConvert);
    AddOutput(app, values->output, values->force, "the new document").required();
    app.add_option("--document-version", values->request.version, "12.0, 12.5 or current")
        ->required()
        ->transform(CLI::CheckedTransformer(versions).description(""));
}

void AddRecover(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app = AddSubcommand(line, values, "recover", "save what is left of a damaged document",
                                  kRecoverExamples, RunRecover);
    AddOutput(app, values->output, values->force, "the new document").required();
}

}  // namespace

void AddDocument(CommandLine& line) {
    AddInspect(line);
    AddSubcommand(line, std::make_shared<Values>(), "stats", "tell what a document holds and what that takes",
                  kStatsExamples, RunStats);
    AddSubcommand(line, std::make_shared<Values>(), "verify", "check a document file", kVerifyExamples,
                  RunVerify);
    AddConvert(line);
    AddRecover(line);
}

}  // namespace command
