#pragma once

#include "fom/startup.h"

namespace VyrFOM {

/// The catalogue that GetTextureCatalogue gives; main thread only.
TextureCatalogue& EditTextureCatalogue();
/// Finds the catalogue in the host's folders. Where there is none, only the paths are set and the user is
/// warned.
TextureCatalogue LocateTextureCatalogue();

}  // namespace VyrFOM
