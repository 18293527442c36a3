#include "fom/run_rewrite.h"

#include <optional>
#include <span>
#include <string>
#include <system_error>

#include "host/base/atomic_file.h"

#include "fom/document_file.h"
#include "fom/drawing_finder.h"
#include "fom/drawing_rewriter.h"
#include "fom/file_identity.h"
#include "fom/path_text.h"
#include "fom/rewrite_report.h"

namespace command {
namespace {

namespace fs = std::filesystem;

/// Rewrites the drawings of one document, one after the other.
class Rewriter {
public:
    Rewriter(const RewriteOptions& options, const PaintDocument& document, const FileList& list)
        : m_options(options), m_document(document), m_finder(list) {}

    /// Without a text the error is filled.
    RewriteReport::Drawing Rewrite(const SourceDrawing& drawing, std::size_t first, host::Error& error) const;

private:
    std::optional<RewrittenDrawing> Make(const SourceDrawing& drawing, std::size_t first, fs::path& file,
                                         host::Error& error) const;
    bool Save(const std::string& text, const fs::path& file, const fs::path& target,
              host::Error& error) const;

    const RewriteOptions& m_options;
    const PaintDocument& m_document;
    DrawingFinder m_finder;
};

RewriteReport::Drawing Rewriter::Rewrite(const SourceDrawing& drawing, std::size_t first,
                                         host::Error& error) const {
    RewriteReport::Drawing entry;
    entry.name = drawing.name;
    entry.shapes = drawing.shapes;
    entry.omissions = drawing.omissions;
    fs::path file;
    const std::optional<RewrittenDrawing> result = Make(drawing, first, file, error);
    const fs::path target = m_options.folder / host::ToPath(host::FromUtf8(drawing.name));
    if (!result || !Save(result->text, file, target, error)) {
        entry.error = error.reason;
        return entry;
    }
    entry.painted = result->painted;
    entry.reasons = result->reasons;
    return entry;
}

std::optional<RewrittenDrawing> Rewriter::Make(const SourceDrawing& drawing, std::size_t first,
                                               fs::path& file, host::Error& error) const {
    error = {.what = drawing.name, .offset = 0, .line = 0, .reason = "not found in the given folders"};
    for (const fs::path& named : m_finder.FindNamed(drawing)) {
        file = named;
        if (auto result = RewriteDrawing(named, m_document, drawing, first, error)) return result;
    }
    host::Error unused;
    for (const fs::path& sized : m_finder.FindSized(drawing)) {
        file = sized;
        if (auto result = RewriteDrawing(sized, m_document, drawing, first, unused)) return result;
    }
    return std::nullopt;
}

bool Rewriter::Save(const std::string& text, const fs::path& file, const fs::path& target,
                    host::Error& error) const {
    error = {.what = PathText(target), .offset = 0, .line = 0, .reason = {}};
    std::error_code failure;
    const std::optional<FileIdentity> old = IdentifyFile(target);
    if (old && old == IdentifyFile(file)) {
        error.reason = "is the drawing itself";
    } else if (old && !m_options.force) {
        error.reason = "exists already; --force overwrites";
    } else if (fs::create_directories(target.parent_path(), failure); failure) {
        error.reason = "the folder cannot be made: " + failure.message();
    }
    return error.reason.empty() && host::SaveAtomically(target, std::as_bytes(std::span(text)), error);
}

}  // namespace

int RunRewrite(const RewriteOptions& options, const Output& output, Console& console, HeapGauge) {
    host::Error error;
    const std::optional<PaintDocument> document = LoadDocument(options.document, error);
    if (!document) {
        console.Fail(error);
        return kFailure;
    }
    const FileList list = ListDrawings(options.paths);
    for (const host::Error& fault : list.errors)
        console.Fail(fault);
    bool good = list.errors.empty();
    const Rewriter rewriter(options, *document, list);
    RewriteReport report;
    std::size_t first = 0;
    for (const SourceDrawing& drawing : document->Drawings()) {
        console.ShowProgress("rewriting", report.drawings.size(), document->Drawings().size());
        report.drawings.push_back(rewriter.Rewrite(drawing, first, error));
        first += drawing.shapes;
        if (report.drawings.back().error.empty()) continue;
        good = false;
        console.Fail(error);
    }
    console.EndProgress();
    const std::string text = options.json ? ToJson(report) : ToText(report);
    return output.Write(std::as_bytes(std::span(text)), console) && good ? kSuccess : kFailure;
}

}  // namespace command
