#include "fom/run.h"

#include <chrono>
#include <exception>
#include <span>
#include <string>

#include "fom/file_list.h"
#include "fom/import_report.h"
#include "fom/options.h"
#include "fom/output.h"
#include "fom/path_text.h"
#include "fom/pen_fit.h"
#include "fom/pen_picture.h"
#include "fom/startup.h"
#include "fom/swatch_sheet.h"

namespace command {
namespace {

/// The library, started as long as this lives.
class Library {
public:
    Library() : m_started(FOMInitialize(0, 0) != 0) {}
    ~Library() {
        if (m_started) FOMShutdown();
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    bool IsStarted() const noexcept { return m_started; }

private:
    bool m_started;
};

struct Counts {
    std::size_t files = 0;
    std::size_t failed = 0;
    bool anyError = false;
};

Counts ImportAll(const Options& options, Importer& importer, Console& console) {
    Counts counts;
    const FileList list = ListDrawings(options.paths);
    for (const host::Error& error : list.errors)
        console.Fail(error);
    for (const std::filesystem::path& file : list.files) {
        console.ShowProgress("reading", counts.files, list.files.size());
        ++counts.files;
        host::Error error;
        if (importer.ImportFile(file, error)) continue;
        ++counts.failed;
        console.Fail(error);
    }
    console.EndProgress();
    importer.CountOmission("compressed drawing", list.compressed);
    importer.Finish();
    counts.anyError = counts.failed > 0 || !list.errors.empty();
    return counts;
}

int RunImport(const Options& options, const Output& output, Console& console, HeapGauge gauge) {
    const auto start = std::chrono::steady_clock::now();
    Importer importer(gauge);
    const Counts counts = ImportAll(options, importer, console);
    ImportReport report = MakeReport(importer);
    report.files = counts.files;
    report.failedFiles = counts.failed;
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const std::string text = options.json ? ToJson(report) : ToText(report);
    if (!output.Write(std::as_bytes(std::span(text)), console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

int RunSwatches(const Options& options, const Output& output, Console& console) {
    Importer importer;
    const Counts counts = ImportAll(options, importer, console);
    host::Error error;
    const SheetOptions sheet{
        .limit = options.limit, .columns = options.columns, .drawings = counts.files - counts.failed};
    const auto progress = [&console](std::size_t done, std::size_t total) {
        console.ShowProgress("drawing", done, total);
    };
    const std::optional<std::vector<std::byte>> png =
        DrawSwatches(importer.Document(), sheet, progress, error);
    console.EndProgress();
    if (!png) {
        error.what = PathText(options.output);
        console.Fail(error);
        return kFailure;
    }
    if (!output.Write(*png, console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

int RunPens(const Options& options, const Output& output, Console& console) {
    const PenFit fit = FitPen(options.pens);
    if (!options.output.empty()) {
        host::Error error;
        const std::optional<std::vector<std::byte>> png = DrawPenFit(fit, error);
        if (!png) {
            error.what = PathText(options.output);
            console.Fail(error);
            return kFailure;
        }
        if (!output.Write(*png, console)) return kFailure;
    }
    const std::string text = options.json ? ToJson(fit) : ToText(fit);
    return Output({}).Write(std::as_bytes(std::span(text)), console) ? kSuccess : kFailure;
}

}  // namespace

int Run(int argc, const char* const* argv, Console& console, HeapGauge gauge) {
    try {
        int exitCode = kSuccess;
        const std::optional<Options> options =
            ParseOptions(argc, argv, console.Out(), console.Err(), exitCode);
        if (!options) return exitCode == kSuccess && !console.Deliver() ? kFailure : exitCode;
        const Output output(options->output);
        if (const std::string obstacle = output.Obstacle(options->force); !obstacle.empty()) {
            console.Fail({.what = PathText(options->output), .offset = 0, .line = 0, .reason = obstacle});
            return kFailure;
        }
        const Library library;
        if (!library.IsStarted()) {
            console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "the library does not start"});
            return kFailure;
        }
        if (options->action == Action::Pens) return RunPens(*options, output, console);
        return options->action == Action::Import ? RunImport(*options, output, console, gauge)
                                                 : RunSwatches(*options, output, console);
    } catch (const std::bad_alloc&) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "not enough memory"});
    } catch (const std::exception& failure) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = failure.what()});
    }
    return kFailure;
}

}  // namespace command
