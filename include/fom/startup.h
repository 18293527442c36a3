#pragma once

#include <array>
#include <cstdint>

#include "host/base/export.h"
#include "host/base/wstring.h"

/// Starts the library, once; calls nest. `initTextures` locates the texture libraries, `engineOption` goes to
/// the graphics engine unchanged. 1 on success and on every nested call; 0 when the interface layer does not
/// start (the count is restored, the graphics engine is left started). What a service throws passes through;
/// the engine and the interface layer are stopped then if they had been started. Main thread only.
FOM_API int FOMInitialize(int initTextures, int engineOption);
/// Undoes one FOMInitialize; the last one stops the library and destroys its singletons, which the next start
/// allows again. Calls must be paired: one too many wraps the count.
FOM_API void FOMShutdown();

namespace VyrFOM {

/// Where the texture catalogue is and how its keys are named; set by FOMInitialize.
struct TextureCatalogue {
    VyrPlatform::VyrStringT<wchar_t> libraryFile;        ///< "texture.txr"
    VyrPlatform::VyrStringT<wchar_t> stylesLibraryFile;  ///< "library.txr"
    std::array<VyrPlatform::VyrStringT<wchar_t>, 5> sectionCodes;
    std::array<std::int32_t, 2> limits{};
    VyrPlatform::VyrStringT<wchar_t> stylesLibraryName;  ///< at most 31 characters
};
FOM_API const TextureCatalogue& GetTextureCatalogue();

}  // namespace VyrFOM

/// Copies the catalogue's files to the user's custom-data folder where they are not there yet, and points the
/// catalogue at them; a file that there is none of will be made there. A file of the user's is never
/// overwritten. Non-zero on success; 0 when a file cannot be copied (it stays where it was) or the catalogue
/// was not located yet.
FOM_API int TXR_PrepForUserChanges();
