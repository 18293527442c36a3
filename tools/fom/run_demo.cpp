#include "fom/run_demo.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <span>
#include <string>
#include <system_error>
#include <thread>

#include "host/base/atomic_file.h"
#include "host/base/wstring.h"

#include "fom/demo_compare.h"
#include "fom/demo_folder.h"
#include "fom/demo_jobs.h"
#include "fom/demo_page.h"
#include "fom/demo_rewrite.h"
#include "fom/demo_sample.h"
#include "fom/demo_selfcheck.h"
#include "fom/demo_summary.h"
#include "fom/document_file.h"
#include "fom/drawing_name.h"
#include "fom/file_list.h"
#include "fom/import_report.h"
#include "fom/path_text.h"

namespace command {
namespace {

namespace fs = std::filesystem;

/// With more drawings than these the pictures of identical ones are not kept.
constexpr std::size_t kMostWithAllPictures = 1000;

class Demo {
public:
    Demo(const DemoRequest& request, Console& console)
        : m_request(request), m_console(console), m_folder(request.output) {
        m_result.size = request.size;
    }

    int Run();

private:
    bool Prepare();
    bool Import();
    bool Save(const Importer& importer);
    bool Rewrite();
    bool Compare();
    bool CheckItself();
    bool Finish();
    void TellFaults();

    /// Does one step and measures it.
    bool Step(const char* name, bool (Demo::*step)()) {
        const auto start = std::chrono::steady_clock::now();
        const bool good = (this->*step)();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        m_result.seconds.emplace_back(name, taken.count());
        m_console.EndProgress();
        return good;
    }
    /// Tells an error; false.
    bool Fail(const host::Error& error) {
        m_console.Fail(error);
        return false;
    }
    bool WriteText(const fs::path& path, const std::string& text) {
        host::Error error;
        return host::SaveAtomically(path, std::as_bytes(std::span(text)), error) || Fail(error);
    }

    const DemoRequest& m_request;
    Console& m_console;
    DemoFolder m_folder;
    DemoResult m_result;
    /// The file of each drawing in the document.
    std::map<std::string, fs::path> m_originals;
};

int Demo::Run() {
    const bool done = Prepare() && Step("import", &Demo::Import) && Step("rewrite", &Demo::Rewrite) &&
                      Step("compare", &Demo::Compare) && Step("self-check", &Demo::CheckItself) && Finish();
    return done && HasPassed(m_result, Sum(m_result.drawings)) ? kSuccess : kFailure;
}

bool Demo::Prepare() {
    host::Error error;
    return (CheckRenderer(error) && m_folder.Prepare(m_request.force, error)) || Fail(error);
}

bool Demo::Import() {
    const FileList list = ListDrawings(m_request.paths);
    for (const host::Error& error : list.errors)
        m_console.Fail(error);
    m_result.notRead = list.errors.size();
    m_result.found = list.files.size();
    DrawingNames taken;
    std::vector<std::string> names;
    for (const std::string& name : list.names)
        names.push_back(taken.Take(name));
    const std::vector<std::size_t> places =
        PickSample(names, m_request.all ? names.size() : m_request.sample);
    Importer importer;
    for (std::size_t done = 0; done < places.size(); ++done) {
        m_console.ShowProgress("reading", done, places.size());
        const std::size_t place = places[done];
        host::Error error;
        if (importer.ImportFile(list.files[place], error, names[place])) {
            m_originals.emplace(importer.Document().Drawings().back().name, list.files[place]);
        } else {
            ++m_result.notRead;
            m_console.Fail(error);
        }
    }
    importer.Finish();
    return Save(importer);
}

bool Demo::Save(const Importer& importer) {
    const PaintDocument& document = importer.Document();
    if (document.Drawings().empty())
        return Fail({.what = {}, .offset = 0, .line = 0, .reason = "there is no drawing to show"});
    const ImportReport report = MakeReport(importer);
    m_result.shapes = report.shapes;
    m_result.distinctFills = report.distinctFills;
    m_result.distinctOutlines = report.distinctOutlines;
    std::vector<std::string> names;
    for (const SourceDrawing& source : document.Drawings()) {
        DemoDrawing drawing;
        drawing.name = source.name;
        drawing.shapes = source.shapes;
        names.push_back(source.name);
        m_result.drawings.push_back(std::move(drawing));
    }
    host::Error error;
    if (!m_folder.Mark(names, error) ||
        !SaveDocument(document, m_folder.Document(), DocumentVersion::Current, error))
        return Fail(error);
    std::error_code unknown;
    m_result.documentBytes = fs::file_size(m_folder.Document(), unknown);
    return true;
}

bool Demo::Rewrite() {
    m_console.EndProgress();
    host::Error error;
    const std::optional<RewriteEntries> entries = RewriteInNewProcess({.document = m_folder.Document(),
                                                                       .sources = m_request.paths,
                                                                       .folder = m_folder.Rewritten(),
                                                                       .report = m_folder.RewriteReport()},
                                                                      error);
    if (!entries) return Fail(error);
    for (DemoDrawing& drawing : m_result.drawings) {
        const auto entry = entries->find(drawing.name);
        if (entry == entries->end()) {
            drawing.fault = "was not rewritten";
            continue;
        }
        drawing.fault = entry->second.fault;
        drawing.reasons = entry->second.reasons;
        drawing.kept = entry->second.kept;
        drawing.painted = entry->second.painted;
        if (drawing.fault.empty() && entry->second.shapes != drawing.shapes)
            drawing.fault = "has another number of shapes in the document";
    }
    return true;
}

bool Demo::Compare() {
    std::error_code failed;
    fs::create_directories(m_folder.Pictures(), failed);
    if (failed)
        return Fail(
            {.what = PathText(m_folder.Pictures()), .offset = 0, .line = 0, .reason = failed.message()});
    std::vector<DemoDrawing>& drawings = m_result.drawings;
    const CompareOptions options{.size = m_request.size,
                                 .pictures = m_folder.Pictures(),
                                 .keepsIdentical = drawings.size() <= kMostWithAllPictures};
    const auto compare = [&](std::size_t i) {
        if (!drawings[i].fault.empty()) return;
        const fs::path rewrite = m_folder.Rewritten() / host::ToPath(host::FromUtf8(drawings[i].name));
        CompareDrawing(m_originals.at(drawings[i].name), rewrite, DemoFolder::PictureName(i), options,
                       drawings[i]);
    };
    const std::size_t jobs = m_request.jobs > 0 ? m_request.jobs : std::thread::hardware_concurrency();
    RunJobs(drawings.size(), jobs, compare,
            [&](std::size_t done) { m_console.ShowProgress("comparing", done, drawings.size()); });
    return true;
}

bool Demo::CheckItself() {
    m_result.selfCheck = CheckSelf({.folder = m_folder,
                                    .sources = m_request.paths,
                                    .drawings = m_result.drawings,
                                    .originals = m_originals,
                                    .size = m_request.size});
    return true;
}

bool Demo::Finish() {
    m_folder.Tidy({m_result.selfCheck.drawing});
    SortByDifference(m_result.drawings);
    const std::string summary = ToJson(m_result);
    if (!WriteText(m_folder.Page(), DemoPage(summary)) || !WriteText(m_folder.Summary(), summary))
        return false;
    TellFaults();
    m_console.Out() << ToText(m_result) << "\n" << PathText(m_folder.Page()) << "\n";
    return m_console.Deliver();
}

void Demo::TellFaults() {
    const auto tell = [this](const std::string& what, const std::string& reason) {
        m_console.Fail({.what = what, .offset = 0, .line = 0, .reason = reason});
    };
    for (const DemoDrawing& drawing : m_result.drawings) {
        if (drawing.outcome == Outcome::Failed) tell(drawing.name, drawing.fault);
        if (drawing.IsUnexplained()) tell(drawing.name, "differs without a reason");
    }
    if (!m_result.selfCheck.passed) tell("self-check", m_result.selfCheck.text);
}

}  // namespace

int RunDemo(const DemoRequest& request, Console& console) {
    return Demo(request, console).Run();
}

}  // namespace command
