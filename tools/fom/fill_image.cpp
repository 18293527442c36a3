#include "fom/fill_image.h"

#include "host/gfx/image.h"

#include "fom/image_surface.h"
#include "fom/surface_png.h"

#include "svg/data_uri.h"

namespace command {
std::string ImageUri(const CGE_COLORBMPFILL& bitmap) {
    const RIMAGE* image = UDIIMGGetBaseImage(UDIIMGFromTmpFile(bitmap.tmpFile));
    const SurfacePointer surface = image ? ToSurface(*image) : nullptr;
    const auto png = surface ? EncodePng(*surface) : std::nullopt;
    return png ? svg::EncodeDataUri("image/png", *png) : std::string();
}

}  // namespace command
