#include "fom/run_import.h"

#include <chrono>
#include <span>
#include <string>

#include "fom/document_file.h"
#include "fom/file_list.h"
#include "fom/import_report.h"
#include "fom/path_text.h"
#include "fom/swatch_sheet.h"

namespace command {
namespace {

struct Counts {
    std::size_t files = 0;
    std::size_t failed = 0;
    bool anyError = false;
};

Counts ImportAll(const std::vector<std::filesystem::path>& paths, Importer& importer, Console& console) {
    Counts counts;
    const FileList list = ListDrawings(paths);
    for (const host::Error& error : list.errors)
        console.Fail(error);
    for (std::size_t i = 0; i < list.files.size(); ++i) {
        console.ShowProgress("reading", counts.files, list.files.size());
        ++counts.files;
        host::Error error;
        if (importer.ImportFile(list.files[i], error, list.names[i])) continue;
        ++counts.failed;
        console.Fail(error);
    }
    console.EndProgress();
    importer.CountOmission("compressed drawing", list.compressed);
    importer.Finish();
    counts.anyError = counts.failed > 0 || !list.errors.empty();
    return counts;
}

bool Save(const PaintDocument& document, const std::filesystem::path& path, Console& console) {
    host::Error error;
    if (SaveDocument(document, path, DocumentVersion::Current, error)) return true;
    console.Fail(error);
    return false;
}

}  // namespace

int RunImport(const ImportRequest& request, const Output& output, Console& console, HeapGauge gauge) {
    const auto start = std::chrono::steady_clock::now();
    Importer importer(gauge);
    const Counts counts = ImportAll(request.paths, importer, console);
    ImportReport report = MakeReport(importer);
    report.files = counts.files;
    report.failedFiles = counts.failed;
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const std::string text = request.json ? ToJson(report) : ToText(report);
    const bool isDocument = IsDocumentPath(request.output);
    if (isDocument && !Save(importer.Document(), request.output, console)) return kFailure;
    if (!(isDocument ? Output({}) : output).Write(std::as_bytes(std::span(text)), console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

int RunSwatches(const SwatchRequest& request, const Output& output, Console& console, HeapGauge) {
    host::Error error;
    Importer importer;
    std::optional<PaintDocument> loaded;
    Counts counts;
    if (request.paths.size() == 1 && IsDocumentPath(request.paths.front())) {
        loaded = LoadDocument(request.paths.front(), error);
        if (!loaded) {
            console.Fail(error);
            return kFailure;
        }
    } else {
        counts = ImportAll(request.paths, importer, console);
    }
    const PaintDocument& document = loaded ? *loaded : importer.Document();
    const SheetOptions sheet{
        .limit = request.limit, .columns = request.columns, .drawings = document.Drawings().size()};
    const auto progress = [&console](std::size_t done, std::size_t total) {
        console.ShowProgress("drawing", done, total);
    };
    const std::optional<std::vector<std::byte>> png = DrawSwatches(document, sheet, progress, error);
    console.EndProgress();
    if (!png) {
        error.what = PathText(request.output);
        console.Fail(error);
        return kFailure;
    }
    if (!output.Write(*png, console)) return kFailure;
    return counts.anyError ? kFailure : kSuccess;
}

}  // namespace command
