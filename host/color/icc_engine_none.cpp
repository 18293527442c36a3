#ifndef FOM_HAVE_LCMS2

#include "color/icc_engine.h"

namespace host::detail {

std::unique_ptr<IccEngine> IccEngine::Open(const IccProfiles& profiles, Error& error) {
    error = Error();
    error.what = !profiles.rgb.empty()    ? "RGB profile"
                 : !profiles.cmyk.empty() ? "CMYK profile"
                                          : "grey profile";
    error.reason = "this build has no ICC engine, colours convert by formulas only";
    return nullptr;
}

}  // namespace host::detail

#endif
