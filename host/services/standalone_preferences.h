#pragma once

#include <filesystem>

#include "host/services/services.h"

#include "services/preference_text.h"

namespace host {

/// Preferences in "preferences.ini" in the user's configuration folder, read when first asked for and again
/// before each change, so that two processes keep each other's values. A file that cannot be read or is no
/// preferences file reads as empty and is never replaced: Write then returns false.
class StandalonePreferences final : public Preferences {
public:
    explicit StandalonePreferences(const Folders& folders) noexcept : m_folders(folders) {}

    std::optional<WString> Read(std::wstring_view section, std::wstring_view key) const override;
    bool Write(std::wstring_view section, std::wstring_view key, std::wstring_view value) override;

private:
    /// Empty when there is no configuration folder.
    std::filesystem::path GetPath() const;

    const Folders& m_folders;
    // What was read last, and from where: the folder may move with the environment.
    mutable std::filesystem::path m_path;
    mutable PreferenceText m_text;
};

/// Switches of section "Switches" of the preferences: "1" or "true" is on.
class StandaloneSwitches final : public Switches {
public:
    explicit StandaloneSwitches(const Preferences& preferences) noexcept : m_preferences(preferences) {}
    bool IsOn(std::wstring_view name) const override;

private:
    const Preferences& m_preferences;
};

}  // namespace host
