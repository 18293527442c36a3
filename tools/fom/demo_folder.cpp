#include "fom/demo_folder.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <string_view>
#include <system_error>

#include "host/base/atomic_file.h"
#include "host/base/wstring.h"

#include "fom/demo_summary.h"
#include "fom/drawing_name.h"
#include "fom/path_text.h"

namespace command {
namespace {

namespace fs = std::filesystem;

/// A folder itself: what a link leads to is not the demo's.
bool IsFolder(const fs::path& path) {
    std::error_code unknown;
    return fs::symlink_status(path, unknown).type() == fs::file_type::directory;
}

/// A file that is not there is no mistake, nor is a folder that is not empty.
void Remove(const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

/// "00017-before.png", "self-check-difference.png"
bool IsOwnPicture(std::string_view name) noexcept {
    constexpr std::size_t kFewestDigits = 5;
    const std::size_t dash = name.rfind('-');
    if (dash == std::string_view::npos) return false;
    const std::string_view number = name.substr(0, dash), rest = name.substr(dash);
    const bool isNumber =
        number.size() >= kFewestDigits && number.find_first_not_of("0123456789") == std::string_view::npos;
    return (isNumber || number == "self-check") &&
           (rest == "-before.png" || rest == "-after.png" || rest == "-difference.png");
}

}  // namespace

std::string DemoFolder::PictureName(std::size_t place) {
    char text[24];
    std::snprintf(text, sizeof text, "%05zu", place);
    return text;
}

bool DemoFolder::Prepare(bool force, host::Error& error) {
    const auto fail = [&](const std::string& reason) {
        error = {.what = PathText(m_path), .offset = 0, .line = 0, .reason = reason};
        return false;
    };
    std::error_code failed;
    if (!fs::exists(m_path, failed) && !failed) fs::create_directories(m_path, failed);
    if (!failed && !fs::is_directory(m_path, failed) && !failed) return fail("is not a folder");
    const bool isEmpty = !failed && fs::is_empty(m_path, failed);
    if (failed) return fail(failed.message());
    if (isEmpty) return true;
    const std::optional<std::vector<std::string>> names = FormerNames();
    if (!names) return fail("is not empty, and not what a demo wrote");
    if (!force) return fail("holds a former demo; --force replaces it");
    RemoveDrawings(Rewritten(), *names);
    Tidy(*names);
    RemovePictures();
    for (const fs::path& file : {Document(), Page()})
        Remove(file);
    return true;
}

bool DemoFolder::Mark(const std::vector<std::string>& names, host::Error& error) {
    const std::string text = UnfinishedSummary(names);
    return host::SaveAtomically(Summary(), std::as_bytes(std::span(text)), error);
}

void DemoFolder::Tidy(const std::vector<std::string>& damaged) const {
    RemoveDrawings(Damaged(), damaged);
    for (const fs::path& file : {DamagedDocument(), RewriteReport()})
        Remove(file);
}

std::optional<std::vector<std::string>> DemoFolder::FormerNames() const {
    host::Error ignored;
    const std::optional<std::vector<std::byte>> bytes = host::ReadWholeFile(Summary(), ignored);
    if (!bytes) return std::nullopt;
    return NamesOfSummary({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
}

void DemoFolder::RemovePictures() const {
    if (!IsFolder(Pictures())) return;
    std::vector<fs::path> found;
    std::error_code failed;
    for (fs::directory_iterator at(Pictures(), failed); !failed && at != fs::directory_iterator();
         at.increment(failed))
        if (IsOwnPicture(PathText(at->path().filename()))) found.push_back(at->path());
    std::for_each(found.begin(), found.end(), Remove);
    Remove(Pictures());
}

void DemoFolder::RemoveDrawings(const fs::path& folder, const std::vector<std::string>& names) const {
    if (!IsFolder(folder)) return;
    for (const std::string& name : names) {
        if (!IsDrawingName(name)) continue;
        const fs::path below = host::ToPath(host::FromUtf8(name));
        Remove(folder / below);
        for (fs::path parent = below.parent_path(); !parent.empty(); parent = parent.parent_path())
            Remove(folder / parent);
    }
    Remove(folder);
}

}  // namespace command
