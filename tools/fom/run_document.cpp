#include "fom/run_document.h"

#include <optional>
#include <span>
#include <string>
#include <utility>

#include "fom/document_format.h"
#include "fom/document_losses.h"
#include "fom/document_stats.h"
#include "fom/document_verify.h"
#include "fom/path_text.h"

namespace command {
namespace {

bool Print(const Facts& facts, bool json, Console& console) {
    const std::string text = json ? facts.ToJson() : facts.ToText();
    return Output({}).Write(std::as_bytes(std::span(text)), console);
}

int Fail(const host::Error& error, Console& console) {
    console.Fail(error);
    return kFailure;
}

/// Calls `read(stream, error)`, tells of its failure and prints the facts that there are, even so.
template <class Read>
int Tell(const DocumentRequest& request, Console& console, const Facts& facts, Read read) {
    host::Error error;
    const bool isGood = ReadDocumentFile(request.path, error, read);
    const bool isPrinted = facts.IsEmpty() || Print(facts, request.json, console);
    if (!isGood) console.Fail(error);
    return isGood && isPrinted ? kSuccess : kFailure;
}

}  // namespace

int RunInspect(const DocumentRequest& request, Console& console) {
    Facts facts;
    return Tell(request, console, facts, [&](AbstractFileStream& stream, host::Error& fault) {
        return InspectDocument(stream, request.choice, facts, fault);
    });
}

int RunStats(const DocumentRequest& request, Console& console) {
    Facts facts;
    return Tell(request, console, facts, [&](AbstractFileStream& stream, host::Error& fault) {
        return MeasureDocument(stream, facts, fault);
    });
}

int RunVerify(const DocumentRequest& request, Console& console) {
    std::vector<host::Error> findings;
    host::Error error;
    const bool isOpen = ReadDocumentFile(request.path, error, [&](AbstractFileStream& stream, host::Error&) {
        findings = VerifyDocument(stream);
        return true;
    });
    if (!isOpen) return Fail(error, console);
    if (request.json) {
        Facts facts;
        facts.AddFlag("sound", findings.empty());
        facts.AddList("findings");
        for (const host::Error& finding : findings) {
            Facts& row = facts.AddRow("findings");
            row.Add("offset", finding.offset);
            row.Add("reason", finding.reason);
        }
        if (!Print(facts, true, console)) return kFailure;
    }
    for (host::Error& finding : findings) {
        finding.what = PathText(request.path);
        if (!request.json) console.Fail(finding);
    }
    return findings.empty() ? kSuccess : kFailure;
}

int RunConvert(const DocumentRequest& request, Console& console) {
    host::Error error;
    const std::optional<DocumentVersion> from = ReadDocumentVersion(request.path, error);
    if (!from) return Fail(error, console);
    const std::optional<PaintDocument> document = LoadDocument(request.path, error);
    if (!document) return Fail(error, console);
    Facts facts;
    facts.Add("from", static_cast<std::uint32_t>(*from), VersionName(*from));
    facts.Add("to", static_cast<std::uint32_t>(request.version), VersionName(request.version));
    facts.Add("shapes", document->ShapeCount());
    AddLosses(FindLosses(*document, request.version), facts);
    if (!SaveDocument(*document, request.output, request.version, error)) return Fail(error, console);
    return Print(facts, request.json, console) ? kSuccess : kFailure;
}

int RunRecover(const DocumentRequest& request, Console& console) {
    host::Error error;
    const std::optional<DocumentVersion> version = ReadDocumentVersion(request.path, error);
    if (!version) return Fail(error, console);
    const std::optional<RecoveredDocument> recovered = RecoverDocument(request.path, error);
    if (!recovered) return Fail(error, console);
    if (!SaveDocument(recovered->document, request.output, *version, error)) return Fail(error, console);
    Facts facts;
    facts.Add("drawings", recovered->document.Drawings().size());
    facts.Add("shapes", recovered->document.ShapeCount());
    facts.Add("fills", recovered->document.Pool()->GetCount());
    facts.Add("outlines", recovered->document.OutlinePool().GetCount());
    if (recovered->fault) {
        Facts& fault = facts.AddGroup("fault");
        fault.Add("offset", recovered->fault->offset);
        fault.Add("reason", recovered->fault->reason);
    }
    facts.AddList("missing");
    for (const std::string& missing : recovered->missing)
        facts.AddRow("missing").Add("what", missing);
    return Print(facts, request.json, console) ? kSuccess : kFailure;
}

}  // namespace command
