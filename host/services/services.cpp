#include "host/services/services.h"

#include <optional>

namespace host {

GraphicsEngine::~GraphicsEngine() = default;
InterfaceLayer::~InterfaceLayer() = default;
Folders::~Folders() = default;
Preferences::~Preferences() = default;
Switches::~Switches() = default;
ResourceStrings::~ResourceStrings() = default;
Units::~Units() = default;
TextureEngine::~TextureEngine() = default;
ArrowheadList::~ArrowheadList() = default;
ImportFilters::~ImportFilters() = default;
FillContainers::~FillContainers() = default;
PatternImages::~PatternImages() = default;
MonoPatterns::~MonoPatterns() = default;

namespace {

std::optional<Services>& InstalledSlot() {
    static std::optional<Services> slot;
    return slot;
}

}  // namespace

void Install(const Services& services) {
    InstalledSlot().emplace(services);
}

const Services& Installed() {
    const std::optional<Services>& slot = InstalledSlot();
    return slot ? *slot : Standalone();
}

}  // namespace host
