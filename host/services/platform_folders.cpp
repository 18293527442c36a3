#include "services/platform_folders.h"

#include "host/base/wstring.h"

#ifdef _WIN32
#include <shlobj.h>
#include <windows.h>
#else
#include <cstdlib>
#include <dlfcn.h>
#endif

namespace host {

#ifdef _WIN32

namespace {

std::filesystem::path KnownFolder(const KNOWNFOLDERID& id) {
    wchar_t* text = nullptr;
    std::filesystem::path path;
    if (SUCCEEDED(SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &text))) path = text;
    CoTaskMemFree(text);
    return path;
}

/// The identifiers by value, so that no library of identifiers has to be linked.
constexpr KNOWNFOLDERID kRoamingData = {
    0x3EB685DB, 0x65F9, 0x4CF6, {0xA0, 0x3A, 0xE3, 0xEF, 0x65, 0x72, 0x9F, 0x3D}};

}  // namespace

std::wstring ReadEnvironment(std::wstring_view name) {
    const std::wstring key(name);
    std::wstring value;
    DWORD needed = GetEnvironmentVariableW(key.c_str(), nullptr, 0);
    // The variable may change between the two calls; then the larger size is asked for again.
    while (needed > value.size()) {
        value.resize(needed);
        needed = GetEnvironmentVariableW(key.c_str(), value.data(), static_cast<DWORD>(value.size()));
    }
    value.resize(needed);
    return value;
}

std::filesystem::path UserDataRoot() {
    return KnownFolder(kRoamingData);
}

std::filesystem::path UserConfigRoot() {
    return KnownFolder(kRoamingData);
}

std::filesystem::path ModulePath() {
    HMODULE module = nullptr;
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(kFlags, reinterpret_cast<LPCWSTR>(&ModulePath), &module)) return {};
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) return {};
        if (length < path.size()) return std::filesystem::path(path.substr(0, length));
        path.resize(path.size() * 2);
    }
}

#else

namespace {

std::filesystem::path FromEnvironment(const char* name, const char* underHome) {
    // A relative folder in these variables is invalid and counts as not set.
    const char* text = std::getenv(name);
    if (text && text[0] == '/') return text;
    const char* home = std::getenv("HOME");
    if (home && home[0] == '/') return std::filesystem::path(home) / underHome;
    return {};
}

}  // namespace

std::wstring ReadEnvironment(std::wstring_view name) {
    const char* text = std::getenv(ToUtf8(name).c_str());
    return text ? FromUtf8(text) : std::wstring();
}

std::filesystem::path UserDataRoot() {
    return FromEnvironment("XDG_DATA_HOME", ".local/share");
}

std::filesystem::path UserConfigRoot() {
    return FromEnvironment("XDG_CONFIG_HOME", ".config");
}

std::filesystem::path ModulePath() {
    std::error_code error;
    Dl_info info{};
    // The loader names the main program as it was called; only a name with a folder in it is a path.
    if (dladdr(reinterpret_cast<const void*>(&ModulePath), &info) != 0 && info.dli_fname &&
        std::string_view(info.dli_fname).find('/') != std::string_view::npos) {
        std::filesystem::path path = std::filesystem::canonical(info.dli_fname, error);
        if (!error) return path;
    }
    std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program;
}

#endif

}  // namespace host
