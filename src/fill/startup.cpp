#include "fom/startup.h"

#include <optional>
#include <utility>

#include "host/base/singleton.h"
#include "host/services/calls.h"

#include "fill/texture_catalogue.h"

namespace {

std::uint32_t startCount = 0;

/// What comes after the interface layer has started.
void StartRest(bool initTextures) {
    std::optional<VyrFOM::TextureCatalogue> catalogue;
    if (initTextures) catalogue = VyrFOM::LocateTextureCatalogue();
    host::Installed().arrowheads.Load();
    if (catalogue) VyrFOM::EditTextureCatalogue() = std::move(*catalogue);
}

/// False when the interface layer does not start. What throws leaves nothing running.
bool Start(bool initTextures, int engineOption) {
    const host::Services& services = host::Installed();
    services.graphicsEngine.Start(engineOption);
    bool interfaceStarted = false;
    try {
        interfaceStarted = services.interfaceLayer.Start();
        if (interfaceStarted) StartRest(initTextures);
    } catch (...) {
        if (interfaceStarted) services.interfaceLayer.Stop();
        services.graphicsEngine.Stop();
        throw;
    }
    return interfaceStarted;
}

}  // namespace

int FOMInitialize(int initTextures, int engineOption) {
    if (startCount != 0) {
        ++startCount;
        return 1;
    }
    VyrUtils::SingletonBase::AllowRecreation();
    startCount = 1;  // first: what is started may call this again
    try {
        if (Start(initTextures != 0, engineOption)) return 1;
    } catch (...) {
        startCount = 0;
        throw;
    }
    startCount = 0;
    return 0;
}

void FOMShutdown() {
    if (startCount != 1) {
        --startCount;
        return;
    }
    const host::Services& services = host::Installed();
    FreeArrowList();
    if (services.importFilters.IsStarted()) services.importFilters.Shutdown();
    services.interfaceLayer.Stop();
    services.graphicsEngine.Stop();
    VyrUtils::SingletonBase::DestroyAll();
    startCount = 0;
}
