#include "fom/run.h"

#include <chrono>
#include <exception>
#include <ostream>
#include <span>
#include <string>
#include <system_error>

#include "host/base/atomic_file.h"

#include "fom/file_list.h"
#include "fom/import_report.h"
#include "fom/options.h"
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

/// Whether the output file may be written; says why not.
bool MayWrite(const Options& options, Console& console) {
    std::error_code unknown;
    if (options.output.empty() || options.force || !std::filesystem::exists(options.output, unknown))
        return true;
    console.Fail({.what = PathText(options.output),
                  .offset = 0,
                  .line = 0,
                  .reason = "exists already; --force overwrites"});
    return false;
}

bool Write(const Options& options, std::span<const std::byte> bytes, Console& console) {
    if (options.output.empty()) {
        console.Out().write(reinterpret_cast<const char*>(bytes.data()),
                            static_cast<std::streamsize>(bytes.size()));
        console.Out().flush();
        if (console.Out().good()) return true;
        console.Fail({.what = "standard output", .offset = 0, .line = 0, .reason = "cannot be written"});
        return false;
    }
    host::Error error;
    if (host::SaveAtomically(options.output, bytes, error)) return true;
    console.Fail(error);
    return false;
}

int RunImport(const Options& options, Console& console, HeapGauge gauge) {
    const auto start = std::chrono::steady_clock::now();
    Importer importer(gauge);
    const Counts counts = ImportAll(options, importer, console);
    ImportReport report = MakeReport(importer);
    report.files = counts.files;
    report.failedFiles = counts.failed;
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const std::string text = options.json ? ToJson(report) : ToText(report);
    if (!Write(options, std::as_bytes(std::span(text)), console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

int RunSwatches(const Options& options, Console& console) {
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
    if (!Write(options, *png, console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

int RunPens(const Options& options, Console& console) {
    const PenFit fit = FitPen(options.pens);
    if (!options.output.empty()) {
        host::Error error;
        const std::optional<std::vector<std::byte>> png = DrawPenFit(fit, error);
        if (!png) {
            error.what = PathText(options.output);
            console.Fail(error);
            return kFailure;
        }
        if (!Write(options, *png, console)) return kFailure;
    }
    const std::string text = options.json ? ToJson(fit) : ToText(fit);
    return Write({}, std::as_bytes(std::span(text)), console) ? kSuccess : kFailure;
}

}  // namespace

int Run(int argc, const char* const* argv, Console& console, HeapGauge gauge) {
    try {
        int exitCode = kSuccess;
        const std::optional<Options> options =
            ParseOptions(argc, argv, console.Out(), console.Err(), exitCode);
        if (!options) return exitCode;
        if (!MayWrite(*options, console)) return kFailure;
        const Library library;
        if (!library.IsStarted()) {
            console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "the library does not start"});
            return kFailure;
        }
        if (options->action == Action::Pens) return RunPens(*options, console);
        return options->action == Action::Import ? RunImport(*options, console, gauge)
                                                 : RunSwatches(*options, console);
    } catch (const std::bad_alloc&) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "not enough memory"});
    } catch (const std::exception& failure) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = failure.what()});
    }
    return kFailure;
}

}  // namespace command
