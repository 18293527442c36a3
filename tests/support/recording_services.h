#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/services/services.h"

namespace testing_support {

/// A whole set of services for tests. What they answer is the public state below, which a test sets as it
/// likes; texts, textures, arrowheads, containers and patterns are the built-in ones unless overridden.
class RecordingServices {
public:
    RecordingServices();
    ~RecordingServices();
    RecordingServices(const RecordingServices&) = delete;
    RecordingServices& operator=(const RecordingServices&) = delete;

    host::Services Get() noexcept;

    /// What was asked to be done, in order and in UTF-8: "engine.start <option>", "engine.stop",
    /// "interface.start", "interface.stop", "interface.warn <text>", "preferences.write
    /// <section>/<key>=<value>", "textures.render <texture> <width>x<height>", "arrowheads.load",
    /// "arrowheads.free", "filters.shutdown".
    std::vector<std::string> log;
    /// Puts questions into the log too: "folders.<name>", "preferences.read <section>/<key>", "switches
    /// <name>", "resources <identifier>", "units.length <unit>", "units.ruler", "textures.last <library>",
    /// "filters.extensions <bitmap|vector>", "containers.subtype <path>", "patterns.names", "patterns.image
    /// <name>", "mono <index>". Names of folders are those of the members of `folders`.
    bool recordQuestions = false;

    bool interfaceStarts = true;
    std::uint16_t rasterResolution = 300;

    struct FolderPaths {
        host::WString userCustom, userProfileConfig, customData, userCustomData, application, fills;
        std::vector<host::WString> fillsFolders;
    } folders;

    /// By section and key, exactly.
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> preferences;
    bool preferencesCanSave = true;
    std::set<std::wstring> switchesOn;
    /// Before the built-in texts.
    std::map<std::wstring, std::wstring> texts;

    int horizontalRulerUnit = host::kUnitMillimetre;
    int verticalRulerUnit = host::kUnitMillimetre;
    bool metric = true;
    /// Before the built-in lengths.
    std::map<int, double> unitLengths;

    std::optional<host::WString> lastUsedLibrary;
    std::optional<CGE_TXRINFO> lastUsedTexture;
    bool filtersAvailable = true;
    bool filtersStarted = false;
    std::optional<std::vector<host::WString>> bitmapNames;

private:
    struct Set;
    std::unique_ptr<Set> m_set;
};

/// Installs the services for as long as it lives; then the standalone ones again.
class ServicesScope {
public:
    explicit ServicesScope(RecordingServices& services) { host::Install(services.Get()); }
    ~ServicesScope() { host::Install(host::Standalone()); }
    ServicesScope(const ServicesScope&) = delete;
    ServicesScope& operator=(const ServicesScope&) = delete;
};

}  // namespace testing_support
