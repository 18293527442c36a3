#include "services/standalone_preferences.h"

#include <span>
#include <string>

#include "host/base/atomic_file.h"

namespace host {
namespace {

/// Larger files are no preferences files.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{4} << 20;

/// The file's text, an empty one when there is no file; nothing when there is one that cannot be read.
std::optional<PreferenceText> Load(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::not_found) return PreferenceText();
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kLargestFile) return std::nullopt;
    Error reason;
    const std::optional<std::vector<std::byte>> bytes = ReadWholeFile(path, reason);
    if (!bytes) return std::nullopt;
    return PreferenceText::Parse({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
}

}  // namespace

std::filesystem::path StandalonePreferences::GetPath() const {
    const WString folder = m_folders.GetUserProfileConfig();
    return folder.empty() ? std::filesystem::path() : ToPath(folder) / "preferences.ini";
}

std::optional<WString> StandalonePreferences::Read(std::wstring_view section, std::wstring_view key) const {
    const std::filesystem::path path = GetPath();
    if (path.empty()) return std::nullopt;
    if (path != m_path) {
        m_text = Load(path).value_or(PreferenceText());
        m_path = path;
    }
    std::optional<std::wstring> value = m_text.Find(section, key);
    if (!value) return std::nullopt;
    return WString(std::move(*value));
}

bool StandalonePreferences::Write(std::wstring_view section, std::wstring_view key, std::wstring_view value) {
    const std::filesystem::path path = GetPath();
    if (path.empty()) return false;
    std::optional<PreferenceText> text = Load(path);
    if (!text) return false;
    const std::optional<std::wstring> stored = text->Find(section, key);
    if (stored && *stored == value) return true;  // most writes give back what was read
    text->Set(section, key, value);
    const std::string& bytes = text->GetBytes();
    if (bytes.size() > kLargestFile) return false;
    std::error_code folderError;
    std::filesystem::create_directories(path.parent_path(), folderError);
    Error error;
    if (folderError || !SaveAtomically(path, std::as_bytes(std::span(bytes)), error)) return false;
    m_text = std::move(*text);
    m_path = path;
    return true;
}

bool StandaloneSwitches::IsOn(std::wstring_view name) const {
    const std::optional<WString> value = m_preferences.Read(L"Switches", name);
    return value && (value->view() == L"1" || CompareFolded(*value, L"true") == 0);
}

}  // namespace host
