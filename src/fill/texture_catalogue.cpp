#include "fill/texture_catalogue.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "host/base/atomic_file.h"
#include "host/profile/profile_file.h"
#include "host/services/calls.h"

#include "fill/file_names.h"

namespace VyrFOM {
namespace {

constexpr wchar_t kLibraryName[] = L"texture.txr";
constexpr wchar_t kStylesLibraryName[] = L"library.txr";
constexpr wchar_t kMissingLibraryText[] = L"b6564889-3fc1-4fd7-a176-6a9385ca607e";
constexpr std::int32_t kLibraryLimit = 129;
constexpr std::size_t kLongestName = 31;  // UTF-16 units

bool CopyFile(std::wstring_view from, std::wstring_view to) {
    host::Error error;
    const auto bytes = host::ReadWholeFile(host::ToPath(from), error);
    return bytes && host::SaveAtomically(host::ToPath(to), *bytes, error);
}

/// Points `file` at the user's copy, which is made unless there is one. What does not exist needs no copy: it
/// will be made in the user's folder. False, `file` as it was, when the copy cannot be made.
bool MoveToUserCopy(host::WString& file, std::wstring_view userFolder, std::wstring_view name) {
    if (file.empty() || userFolder.empty()) return false;
    host::WString copy(JoinPath(userFolder, name));
    if (!IsFile(copy) && IsFile(file)) {
        std::error_code error;
        std::filesystem::create_directories(host::ToPath(userFolder), error);
        if (error || !CopyFile(file, copy)) return false;
    }
    file = std::move(copy);
    return true;
}

bool MoveToUserCopies(TextureCatalogue& catalogue) {
    const host::WString folder = host::Installed().folders.GetUserCustomData();
    const bool library = MoveToUserCopy(catalogue.libraryFile, folder, kLibraryName);
    const bool styles = MoveToUserCopy(catalogue.stylesLibraryFile, folder, kStylesLibraryName);
    return library && styles;
}

}  // namespace

TextureCatalogue& EditTextureCatalogue() {
    static TextureCatalogue& catalogue = *new TextureCatalogue;  // never destroyed: read until the very end
    return catalogue;
}

const TextureCatalogue& GetTextureCatalogue() {
    return EditTextureCatalogue();
}

TextureCatalogue LocateTextureCatalogue() {
    const host::Folders& folders = host::Installed().folders;
    const host::WString userFolder = folders.GetUserCustomData();
    const bool userCopy = !userFolder.empty() && IsFile(JoinPath(userFolder, kLibraryName));
    const host::WString folder = userCopy ? userFolder : folders.GetCustomData();

    TextureCatalogue catalogue = GetTextureCatalogue();
    catalogue.libraryFile = folder.empty() ? std::wstring() : JoinPath(folder, kLibraryName);
    catalogue.stylesLibraryFile = folder.empty() ? std::wstring() : JoinPath(folder, kStylesLibraryName);
    if (!IsFile(catalogue.libraryFile)) {
        host::Installed().interfaceLayer.WarnUser(Resources::Framework::GetString(kMissingLibraryText));
        return catalogue;
    }
    if (!userCopy) MoveToUserCopies(catalogue);
    catalogue.sectionCodes = {L"L", L"T", L"S", L"P", L"F"};
    catalogue.limits = {kLibraryLimit, kLibraryLimit};
    const host::WString name =
        host::ReadProfileString(catalogue.libraryFile, L"Header", L"StylesLibraryName", L"");
    catalogue.stylesLibraryName = host::CutUtf16(name, kLongestName);
    return catalogue;
}

}  // namespace VyrFOM

int TXR_PrepForUserChanges() {
    VyrFOM::TextureCatalogue moved = VyrFOM::GetTextureCatalogue();
    const bool done = VyrFOM::MoveToUserCopies(moved);
    VyrFOM::EditTextureCatalogue() = std::move(moved);  // whole: what throws above changes neither path
    return done ? 1 : 0;
}
