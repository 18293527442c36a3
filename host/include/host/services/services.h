#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/base/wstring.h"
#include "host/gfx/image.h"
#include "host/gfx/pattern_fills.h"

/// What the application brings: services whose answers depend on the machine, the user or the application.
/// The library reaches them through the free functions beside this header; nothing here mentions the
/// library's own types. All services are called from the host's main thread, except where a function says
/// otherwise.
namespace host {

using WString = VyrPlatform::VyrStringT<wchar_t>;

class FOM_API GraphicsEngine {
public:
    virtual ~GraphicsEngine();
    /// `option` is passed through from FOMInitialize and means something to the engine alone.
    virtual void Start(int option) = 0;
    virtual void Stop() = 0;
    /// Dots per inch at which fills are rendered as images.
    virtual std::uint16_t GetRasterResolution() const = 0;
};

class FOM_API InterfaceLayer {
public:
    virtual ~InterfaceLayer();
    virtual bool Start() = 0;
    virtual void Stop() = 0;
    virtual void WarnUser(std::wstring_view text) = 0;
};

/// Folders, without a trailing separator; an empty string where there is none.
class FOM_API Folders {
public:
    virtual ~Folders();
    virtual WString GetUserCustom() const = 0;         ///< the user's own editable files
    virtual WString GetUserProfileConfig() const = 0;  ///< the user's configuration
    virtual WString GetCustomData() const = 0;         ///< the shared copy of the data users may change
    virtual WString GetUserCustomData() const = 0;     ///< the user's own copy of it
    virtual WString GetApplication() const = 0;        ///< what was installed
    virtual WString GetFills() const = 0;              ///< the "fills" file location
    virtual std::vector<WString> GetFillsFolders() const = 0;  ///< searched in this order
};

/// Values that the user sets, by section and key.
class FOM_API Preferences {
public:
    virtual ~Preferences();
    virtual std::optional<WString> Read(std::wstring_view section, std::wstring_view key) const = 0;
    /// Stores and saves. False, with the stored value as it was, when it cannot be saved.
    virtual bool Write(std::wstring_view section, std::wstring_view key, std::wstring_view value) = 0;
};

/// Named switches of the host's configuration; an unknown one is off.
class FOM_API Switches {
public:
    virtual ~Switches();
    virtual bool IsOn(std::wstring_view name) const = 0;
};

class FOM_API ResourceStrings {
public:
    virtual ~ResourceStrings();
    /// Empty for an unknown identifier.
    virtual WString GetString(std::wstring_view identifier) const = 0;
};

/// Unit codes of rulers and values. See docs/units.md.
enum UnitCode : int {
    kUnitInch = 1,
    kUnitMillimetre = 2,
    kUnitPoint = 3,
    kUnitTechnicalMillimetre = 4,
    kUnitCentimetre = 5,
    kUnitPixel = 6,
};

class FOM_API Units {
public:
    virtual ~Units();
    /// Length of one unit in document units (a tenth of a micrometre); 0 for an unknown code.
    virtual double GetBaseLength(int unit) const = 0;
    virtual int GetHorizontalRulerUnit() const = 0;
    virtual int GetVerticalRulerUnit() const = 0;
    virtual bool IsMetric() const = 0;
};

class FOM_API TextureEngine {
public:
    virtual ~TextureEngine();
    /// The library that the user took a texture from last; empty when none.
    virtual WString GetLastUsedLibrary() = 0;
    /// Fills `info` with the texture used last in `library` (an empty name is the default library). False,
    /// `info` untouched, when there is none.
    virtual bool GetLastUsedTexture(std::wstring_view library, CGE_TXRINFO& info) = 0;
    /// Renders the texture. Null when it is not known. Repeatable: equal `info` and sizes give equal pixels.
    virtual std::unique_ptr<RIMAGE> Render(const CGE_TXRINFO& info, std::uint32_t width,
                                           std::uint32_t height) = 0;
};

/// The arrowheads that outlines choose from. Handles belong to the list.
class FOM_API ArrowheadList {
public:
    virtual ~ArrowheadList();
    /// Asks to have the list ready; the other functions wait for that, and ask by themselves when nobody has.
    virtual void Load() = 0;
    virtual void Free() = 0;
    virtual unsigned GetCount() = 0;
    virtual HMEM GetHandle(unsigned index) = 0;
    virtual bool AreSame(HMEM a, HMEM b) = 0;
};

/// Import filters for pattern files.
class FOM_API ImportFilters {
public:
    virtual ~ImportFilters();
    virtual bool IsAvailable() const = 0;
    virtual bool IsStarted() const = 0;
    virtual void Shutdown() = 0;
    /// File extensions, without a dot, of the bitmap or the vector filters.
    virtual std::vector<WString> GetExtensions(bool bitmap) = 0;
};

/// Files that hold one fill.
class FOM_API FillContainers {
public:
    virtual ~FillContainers();
    /// Without a dot.
    virtual WString GetExtension() const = 0;
    /// 0 colour bitmap, 1 vector, 2 fountain; empty when the file cannot be read as a fill container.
    virtual std::optional<int> ReadSubtype(std::wstring_view path) = 0;
};

/// The bitmap patterns that the user has registered.
class FOM_API PatternImages {
public:
    virtual ~PatternImages();
    /// Names of the registered bitmaps, in order.
    virtual std::vector<WString> GetBitmapNames() = 0;
    /// A new reference on the image of that name; null when there is none.
    virtual HUDIIMAGE GetImage(std::wstring_view name) = 0;
};

/// Two-colour bitmaps that mono bitmap fills start from. Handles belong to the service.
class FOM_API MonoPatterns {
public:
    virtual ~MonoPatterns();
    virtual HMEM GetPattern(unsigned index) = 0;
};

/// The set that the library works with. The references must outlive their installation.
struct Services {
    GraphicsEngine& graphicsEngine;
    InterfaceLayer& interfaceLayer;
    Folders& folders;
    Preferences& preferences;
    Switches& switches;
    ResourceStrings& resourceStrings;
    Units& units;
    TextureEngine& textureEngine;
    ArrowheadList& arrowheads;
    ImportFilters& importFilters;
    FillContainers& fillContainers;
    PatternImages& patternImages;
    MonoPatterns& monoPatterns;
};

/// Replaces the services that the library uses. Call it before FOMInitialize, from the main thread.
FOM_API void Install(const Services& services);
/// The services in use: the standalone ones until others are installed.
FOM_API const Services& Installed();
/// The default set that comes with the library; one per process.
FOM_API const Services& Standalone();

}  // namespace host
