#include "fom/demo_rewrite.h"

#include <nlohmann/json.hpp>
#include <system_error>

#include "host/base/atomic_file.h"

#include "fom/child_process.h"
#include "fom/demo_reasons.h"
#include "fom/path_text.h"

namespace command {
namespace {

using Json = nlohmann::json;

/// This program; the name stays right when the file is replaced meanwhile.
constexpr const char* kOwnProgram = "/proc/self/exe";

/// The names of an object's members.
std::set<std::string> Names(const Json& counts) {
    std::set<std::string> names;
    if (counts.is_object())
        for (const auto& [name, count] : counts.items())
            names.insert(name);
    return names;
}

/// Null for a member that is not there.
Json Member(const Json& object, const char* name) {
    return object.is_object() && object.contains(name) ? object[name] : Json();
}

std::string Text(const Json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::size_t Number(const Json& value) {
    return value.is_number_unsigned() ? value.get<std::size_t>() : 0;
}

std::optional<RewriteEntries> ReadReport(const std::filesystem::path& path, host::Error& error) {
    const std::optional<std::vector<std::byte>> bytes = host::ReadWholeFile(path, error);
    if (!bytes) return std::nullopt;
    const auto* first = reinterpret_cast<const char*>(bytes->data());
    const Json drawings = Member(Json::parse(first, first + bytes->size(), nullptr, false), "drawings");
    if (!drawings.is_array()) {
        error = {.what = PathText(path), .offset = 0, .line = 0, .reason = "is no report of a rewriting"};
        return std::nullopt;
    }
    RewriteEntries entries;
    for (const Json& drawing : drawings) {
        RewriteEntry& entry = entries[Text(Member(drawing, "name"))];
        entry.shapes = Number(Member(drawing, "shapes"));
        entry.painted = Number(Member(drawing, "painted"));
        for (const std::string& reason : Names(Member(drawing, "reasons")))
            (ShowsInRewrite(reason) ? entry.reasons : entry.kept).insert(reason);
        for (const std::string& omission : Names(Member(drawing, "omissions")))
            if (ShowsInRewrite(omission)) entry.reasons.insert(omission);
        entry.fault = Text(Member(drawing, "error"));
    }
    return entries;
}

}  // namespace

std::optional<RewriteEntries> RewriteInNewProcess(const RewriteRequest& request, host::Error& error) {
    ChildRequest child;
    child.program = kOwnProgram;
    child.sharesErrors = true;
    // What comes after "--" is no option, whatever it is called.
    child.arguments = {"rewrite",
                       "-o",
                       request.folder.string(),
                       "--json",
                       request.report.string(),
                       "--",
                       request.document.string()};
    for (const std::filesystem::path& source : request.sources)
        child.arguments.push_back(source.string());
    const ChildResult result = RunChild(child);
    // It fails also for a single drawing, which the report then tells.
    if (result.end == ChildResult::End::Exited && result.code <= 1) {
        std::optional<RewriteEntries> entries = ReadReport(request.report, error);
        std::error_code ignored;
        std::filesystem::remove(request.report, ignored);
        return entries;
    }
    error = {.what = "fom rewrite", .offset = 0, .line = 0, .reason = DescribeEnd(result)};
    return std::nullopt;
}

}  // namespace command
