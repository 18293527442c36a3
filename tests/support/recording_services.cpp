#include "support/recording_services.h"

#include "engines/arrowheads.h"
#include "engines/fill_containers.h"
#include "engines/import_filters.h"
#include "engines/mono_patterns.h"
#include "engines/pattern_images.h"
#include "engines/texture_engine.h"
#include "services/resource_table.h"
#include "services/standalone_engine.h"
#include "services/standalone_units.h"

namespace testing_support {
namespace {

using host::WString;
using State = RecordingServices;

void Note(State& state, std::string text) {
    state.log.push_back(std::move(text));
}

void NoteQuestion(State& state, const std::string& what, std::wstring_view about = {}) {
    if (!state.recordQuestions) return;
    Note(state, about.empty() ? what : what + ' ' + host::ToUtf8(about));
}

/// What the services below have in common.
struct Recorder {
    explicit Recorder(State& owner) noexcept : state(owner) {}
    State& state;
};

struct Engine final : host::GraphicsEngine, Recorder {
    using Recorder::Recorder;
    void Start(int option) override { Note(state, "engine.start " + std::to_string(option)); }
    void Stop() override { Note(state, "engine.stop"); }
    std::uint16_t GetRasterResolution() const override { return state.rasterResolution; }
};

struct Interface final : host::InterfaceLayer, Recorder {
    using Recorder::Recorder;
    bool Start() override {
        Note(state, "interface.start");
        return state.interfaceStarts;
    }
    void Stop() override { Note(state, "interface.stop"); }
    void WarnUser(std::wstring_view text) override { Note(state, "interface.warn " + host::ToUtf8(text)); }
};

struct FolderSet final : host::Folders, Recorder {
    using Recorder::Recorder;
    WString Answer(const char* name, const WString& path) const {
        NoteQuestion(state, std::string("folders.") + name);
        return path;
    }
    WString GetUserCustom() const override { return Answer("userCustom", state.folders.userCustom); }
    WString GetUserProfileConfig() const override {
        return Answer("userProfileConfig", state.folders.userProfileConfig);
    }
    WString GetCustomData() const override { return Answer("customData", state.folders.customData); }
    WString GetUserCustomData() const override {
        return Answer("userCustomData", state.folders.userCustomData);
    }
    WString GetApplication() const override { return Answer("application", state.folders.application); }
    WString GetFills() const override { return Answer("fills", state.folders.fills); }
    std::vector<WString> GetFillsFolders() const override {
        NoteQuestion(state, "folders.fillsFolders");
        return state.folders.fillsFolders;
    }
};

struct PreferenceSet final : host::Preferences, Recorder {
    using Recorder::Recorder;
    static std::wstring Path(std::wstring_view section, std::wstring_view key) {
        return std::wstring(section) + L'/' + std::wstring(key);
    }
    std::optional<WString> Read(std::wstring_view section, std::wstring_view key) const override {
        NoteQuestion(state, "preferences.read", Path(section, key));
        const auto found = state.preferences.find({std::wstring(section), std::wstring(key)});
        if (found == state.preferences.end()) return std::nullopt;
        return WString(found->second);
    }
    bool Write(std::wstring_view section, std::wstring_view key, std::wstring_view value) override {
        Note(state, "preferences.write " + host::ToUtf8(Path(section, key)) + '=' + host::ToUtf8(value));
        if (state.preferencesCanSave) state.preferences[{std::wstring(section), std::wstring(key)}] = value;
        return state.preferencesCanSave;
    }
};

struct SwitchSet final : host::Switches, Recorder {
    using Recorder::Recorder;
    bool IsOn(std::wstring_view name) const override {
        NoteQuestion(state, "switches", name);
        return state.switchesOn.count(std::wstring(name)) != 0;
    }
};

struct Texts final : host::ResourceStrings, Recorder {
    using Recorder::Recorder;
    WString GetString(std::wstring_view identifier) const override {
        NoteQuestion(state, "resources", identifier);
        const auto found = state.texts.find(std::wstring(identifier));
        return found != state.texts.end() ? WString(found->second) : builtIn.GetString(identifier);
    }
    host::ResourceTable builtIn;
};

struct UnitSet final : host::Units, Recorder {
    UnitSet(State& owner, const host::Preferences& preferences, const host::GraphicsEngine& engine) noexcept
        : Recorder(owner), builtIn(preferences, engine) {}
    double GetBaseLength(int unit) const override {
        NoteQuestion(state, "units.length", std::to_wstring(unit));
        const auto found = state.unitLengths.find(unit);
        return found != state.unitLengths.end() ? found->second : builtIn.GetBaseLength(unit);
    }
    int GetHorizontalRulerUnit() const override { return Ruler(state.horizontalRulerUnit); }
    int GetVerticalRulerUnit() const override { return Ruler(state.verticalRulerUnit); }
    bool IsMetric() const override { return state.metric; }
    int Ruler(int unit) const {
        NoteQuestion(state, "units.ruler");
        return unit;
    }
    host::StandaloneUnits builtIn;
};

struct Textures final : host::TextureEngine, Recorder {
    using Recorder::Recorder;
    WString GetLastUsedLibrary() override {
        return state.lastUsedLibrary ? *state.lastUsedLibrary : builtIn.GetLastUsedLibrary();
    }
    bool GetLastUsedTexture(std::wstring_view library, CGE_TXRINFO& info) override {
        NoteQuestion(state, "textures.last", library);
        if (!state.lastUsedTexture) return builtIn.GetLastUsedTexture(library, info);
        info = *state.lastUsedTexture;
        return true;
    }
    std::unique_ptr<RIMAGE> Render(const CGE_TXRINFO& info, std::uint32_t width,
                                   std::uint32_t height) override {
        Note(state, "textures.render " + host::ToUtf8(info.texture.Get()) + ' ' + std::to_string(width) +
                        'x' + std::to_string(height));
        return builtIn.Render(info, width, height);
    }
    host::ProceduralTextures builtIn;
};

struct Arrowheads final : host::ArrowheadList, Recorder {
    using Recorder::Recorder;
    void Load() override {
        Note(state, "arrowheads.load");
        builtIn.Load();
    }
    void Free() override {
        Note(state, "arrowheads.free");
        builtIn.Free();
    }
    unsigned GetCount() override { return builtIn.GetCount(); }
    HMEM GetHandle(unsigned index) override { return builtIn.GetHandle(index); }
    bool AreSame(HMEM a, HMEM b) override { return builtIn.AreSame(a, b); }
    host::StandaloneArrowheads builtIn;
};

struct Filters final : host::ImportFilters, Recorder {
    using Recorder::Recorder;
    bool IsAvailable() const override { return state.filtersAvailable; }
    bool IsStarted() const override { return state.filtersStarted; }
    void Shutdown() override {
        Note(state, "filters.shutdown");
        state.filtersStarted = false;
    }
    std::vector<WString> GetExtensions(bool bitmap) override {
        NoteQuestion(state, "filters.extensions", bitmap ? L"bitmap" : L"vector");
        state.filtersStarted = true;
        return builtIn.GetExtensions(bitmap);
    }
    host::StandaloneFilters builtIn;
};

struct Containers final : host::FillContainers, Recorder {
    using Recorder::Recorder;
    WString GetExtension() const override { return builtIn.GetExtension(); }
    std::optional<int> ReadSubtype(std::wstring_view path) override {
        NoteQuestion(state, "containers.subtype", path);
        return builtIn.ReadSubtype(path);
    }
    host::StandaloneFillContainers builtIn;
};

struct Patterns final : host::PatternImages, Recorder {
    using Recorder::Recorder;
    std::vector<WString> GetBitmapNames() override {
        NoteQuestion(state, "patterns.names");
        return state.bitmapNames ? *state.bitmapNames : builtIn.GetBitmapNames();
    }
    HUDIIMAGE GetImage(std::wstring_view name) override {
        NoteQuestion(state, "patterns.image", name);
        return builtIn.GetImage(name);
    }
    host::BuiltInPatternImages builtIn;
};

struct Mono final : host::MonoPatterns, Recorder {
    using Recorder::Recorder;
    HMEM GetPattern(unsigned index) override {
        NoteQuestion(state, "mono", std::to_wstring(index));
        return builtIn.GetPattern(index);
    }
    host::BuiltInMonoPatterns builtIn;
};

}  // namespace

struct RecordingServices::Set {
    State& state;
    Engine engine{state};
    Interface interfaceLayer{state};
    FolderSet folders{state};
    PreferenceSet preferences{state};
    SwitchSet switches{state};
    Texts texts{state};
    UnitSet units{state, preferences, engine};
    Textures textures{state};
    Arrowheads arrowheads{state};
    Filters filters{state};
    Containers containers{state};
    Patterns patterns{state};
    Mono mono{state};
};

RecordingServices::RecordingServices() : m_set(new Set{*this}) {}
RecordingServices::~RecordingServices() = default;

host::Services RecordingServices::Get() noexcept {
    Set& set = *m_set;
    return {set.engine,     set.interfaceLayer, set.folders,  set.preferences, set.switches,
            set.texts,      set.units,          set.textures, set.arrowheads,  set.filters,
            set.containers, set.patterns,       set.mono};
}

}  // namespace testing_support
