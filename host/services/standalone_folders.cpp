#include "services/standalone_folders.h"

#include <filesystem>

#include "services/platform_folders.h"

namespace host {
namespace {

using std::filesystem::path;

path HomeFolder() {
    const std::wstring text = ReadEnvironment(L"FOM_HOME");
    return text.empty() ? path() : ToPath(text);
}

/// As the interface states folders: without a trailing separator, empty when there is none.
WString AsText(const path& folder) {
    const bool trailing = !folder.has_filename() && folder.has_relative_path();
    return WString(FromPath(trailing ? folder.parent_path() : folder));
}

/// `name` below FOM_HOME when it is set, otherwise `platform` below `root`; empty when there is no root.
WString UserFolder(const char* name, path (*root)(), const char* platform) {
    if (const path home = HomeFolder(); !home.empty()) return AsText(home / name);
    const path base = root();
    return base.empty() ? WString() : AsText(base / platform);
}

/// "share/fom" beside the module's folder or up to three folders above that; the nearest that exists, and the
/// nearest of all when none does.
path FindShare() {
    const path module = ModulePath();
    if (module.empty()) return {};
    path nearest = module.parent_path().parent_path() / "share" / "fom";
    path folder = module.parent_path();
    for (int level = 0; level < 4 && folder.has_relative_path(); ++level) {
        folder = folder.parent_path();
        std::error_code error;
        path share = folder / "share" / "fom";
        if (std::filesystem::is_directory(share, error)) return share;
    }
    return nearest;
}

path ApplicationFolder() {
    if (const path home = HomeFolder(); !home.empty()) return home / "app";
    static const path share = FindShare();
    return share;
}

}  // namespace

WString StandaloneFolders::GetUserCustom() const {
    return UserFolder("custom", UserDataRoot, "fom/custom");
}

WString StandaloneFolders::GetUserProfileConfig() const {
    return UserFolder("config", UserConfigRoot, "fom");
}

WString StandaloneFolders::GetCustomData() const {
    if (const path home = HomeFolder(); !home.empty()) return AsText(home / "customdata");
    const path application = ApplicationFolder();
    return application.empty() ? WString() : AsText(application / "customdata");
}

WString StandaloneFolders::GetUserCustomData() const {
    return UserFolder("usercustomdata", UserDataRoot, "fom/customdata");
}

WString StandaloneFolders::GetApplication() const {
    return AsText(ApplicationFolder());
}

WString StandaloneFolders::GetFills() const {
    return UserFolder("fills", UserDataRoot, "fom/fills");
}

std::vector<WString> StandaloneFolders::GetFillsFolders() const {
    std::vector<WString> folders;
    if (WString own = GetFills(); !own.empty()) folders.push_back(std::move(own));
    if (const path application = ApplicationFolder(); !application.empty())
        folders.push_back(AsText(application / "fills"));
    return folders;
}

}  // namespace host
