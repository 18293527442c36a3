#include "fom/fill_files.h"

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "host/services/calls.h"

#include "fill/file_names.h"

using String = VyrPlatform::VyrStringT<wchar_t>;

namespace {

/// Files of one folder that are looked at, the first by name.
constexpr std::size_t kMostFiles = 65536;

/// The stored path of a kind's default file; null for kinds that have none.
PreferenceString* FindPreference(CgeFillType kind) {
    static PreferenceString fountain(L"Styles", L"DefaultFountainFillPath");
    static PreferenceString bitmap(L"Styles", L"DefaultBitmapFillPath");
    static PreferenceString vector(L"Styles", L"DefaultVectorFillPath");
    switch (kind) {
        case FillFountain:
            return &fountain;
        case FillColorBitmap:
            return &bitmap;
        case FillVector:
            return &vector;
        default:
            return nullptr;
    }
}

/// The subtype that a fill container of this kind states.
std::optional<int> SubtypeOf(CgeFillType kind) {
    switch (kind) {
        case FillColorBitmap:
            return 0;
        case FillVector:
            return 1;
        case FillFountain:
            return 2;
        default:
            return std::nullopt;
    }
}

/// Extensions, without a dot, of the files that may hold a fill of this kind.
std::vector<host::WString> GetExtensions(CgeFillType kind) {
    const host::Services& services = host::Installed();
    std::vector<host::WString> extensions{services.fillContainers.GetExtension()};
    if (kind == FillFountain || !services.importFilters.IsAvailable()) return extensions;
    for (host::WString& extension : services.importFilters.GetExtensions(kind == FillColorBitmap))
        extensions.push_back(std::move(extension));
    return extensions;
}

bool HasExtension(std::wstring_view name, std::wstring_view extension) {
    if (extension.empty() || name.size() <= extension.size()) return false;
    const std::size_t start = name.size() - extension.size();
    return name[start - 1] == L'.' && host::CompareFolded(name.substr(start), extension) == 0;
}

bool MatchesAny(std::wstring_view name, const std::vector<host::WString>& extensions) {
    for (const host::WString& extension : extensions)
        if (HasExtension(name, extension)) return true;
    return false;
}

struct NameOrder {
    bool operator()(const std::wstring& a, const std::wstring& b) const noexcept {
        const int order = host::CompareFolded(a, b);
        return order != 0 ? order < 0 : host::CompareUnits(a, b) < 0;
    }
};
using Names = std::set<std::wstring, NameOrder>;

/// The matching files of a folder in order; none of a folder that cannot be read.
Names ListFolder(std::wstring_view folder, const std::vector<host::WString>& extensions) {
    Names names;
    std::error_code error;
    std::filesystem::directory_iterator at(host::ToPath(folder), error);
    for (const std::filesystem::directory_iterator end; !error && at != end; at.increment(error)) {
        std::wstring name = host::FromPath(at->path().filename());
        std::error_code fileError;
        if (!MatchesAny(name, extensions) || !at->is_regular_file(fileError)) continue;
        names.insert(std::move(name));
        if (names.size() > kMostFiles) names.erase(std::prev(names.end()));
    }
    return names;
}

/// The answer of GetFillFilePathForType before it is checked.
String StoredOrFirst(CgeFillType kind, const String& stored) {
    if (kind == FillFountain || VyrFOM::IsFile(stored)) return stored;
    return GetNthFilename(0, kind);
}

}  // namespace

String GetNthFilename(int n, CgeFillType kind) {
    const std::optional<int> subtype = SubtypeOf(kind);
    if (n < 0 || !subtype) return String();
    host::FillContainers& containers = host::Installed().fillContainers;
    const std::vector<host::WString> extensions = GetExtensions(kind);
    for (const host::WString& folder : host::Installed().folders.GetFillsFolders()) {
        if (folder.empty()) continue;
        for (const std::wstring& name : ListFolder(folder, extensions)) {
            String path(VyrFOM::JoinPath(folder, name));
            if (containers.ReadSubtype(path) == subtype && n-- == 0) return path;
        }
    }
    return String();
}

String GetFillFilePathForType(CgeFillType kind) {
    PreferenceString* preference = FindPreference(kind);
    if (!preference) return String();
    const String stored = preference->Get();
    String path = StoredOrFirst(kind, stored);
    if (!VyrFOM::IsFile(path)) path.clear();
    preference->Set(path);
    return path;
}

void SetFillFilePathForType(CgeFillType kind, const String& path) {
    if (PreferenceString* preference = FindPreference(kind)) preference->Set(path);
}

String GetBitmapsDirectory() {
    return host::Installed().folders.GetFills();
}

String GetVectorsDirectory() {
    return GetBitmapsDirectory();
}
