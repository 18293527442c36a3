#include "host/services/services.h"

#include "engines/arrowheads.h"
#include "engines/fill_containers.h"
#include "engines/import_filters.h"
#include "engines/mono_patterns.h"
#include "engines/pattern_images.h"
#include "engines/texture_engine.h"
#include "services/resource_table.h"
#include "services/standalone_engine.h"
#include "services/standalone_folders.h"
#include "services/standalone_preferences.h"
#include "services/standalone_units.h"

namespace host {
namespace {

/// The default set, in the order in which its members need each other.
struct StandaloneSet {
    StandaloneGraphicsEngine graphicsEngine;
    StandaloneInterfaceLayer interfaceLayer;
    StandaloneFolders folders;
    StandalonePreferences preferences{folders};
    StandaloneSwitches switches{preferences};
    ResourceTable resourceStrings;
    StandaloneUnits units{preferences, graphicsEngine};
    ProceduralTextures textureEngine;
    StandaloneArrowheads arrowheads;
    StandaloneFilters importFilters;
    StandaloneFillContainers fillContainers;
    BuiltInPatternImages patternImages;
    BuiltInMonoPatterns monoPatterns;
    Services services{graphicsEngine,  interfaceLayer, folders,       preferences, switches,
                      resourceStrings, units,          textureEngine, arrowheads,  importFilters,
                      fillContainers,  patternImages,  monoPatterns};
};

}  // namespace

const Services& Standalone() {
    // Never destroyed: destructors of other process-wide objects may still call services.
    static StandaloneSet* const set = new StandaloneSet;
    return set->services;
}

}  // namespace host
