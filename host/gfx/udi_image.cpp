#include <atomic>
#include <new>
#include <utility>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

namespace {
std::atomic<std::size_t> liveImages{0};
}

/// Either holds a raster or shows the one of its base, on which it keeps a reference. A base exists before
/// its views and is never changed, so that a chain of views always ends.
struct UDIIMAGE {
    UDIIMAGE(std::unique_ptr<RIMAGE> pixels, HUDIIMAGE shown)
    noexcept : raster(std::move(pixels)), base(shown) {
        liveImages.fetch_add(1, std::memory_order_relaxed);
    }
    ~UDIIMAGE() { liveImages.fetch_sub(1, std::memory_order_relaxed); }
    UDIIMAGE(const UDIIMAGE&) = delete;
    UDIIMAGE& operator=(const UDIIMAGE&) = delete;

    std::atomic<std::size_t> references{1};
    const std::unique_ptr<RIMAGE> raster;
    const HUDIIMAGE base;
};

HUDIIMAGE UDIIMGCreateFromRIMAGE(std::unique_ptr<RIMAGE> raster) {
    return raster ? new UDIIMAGE(std::move(raster), nullptr) : nullptr;
}

HUDIIMAGE UDIIMGCreateView(HUDIIMAGE base) {
    if (!base) return nullptr;
    HUDIIMAGE view = new UDIIMAGE(nullptr, base);
    UDIIMGDuplicate(base);
    return view;
}

HUDIIMAGE UDIIMGDuplicate(HUDIIMAGE image) noexcept {
    if (image) image->references.fetch_add(1, std::memory_order_relaxed);
    return image;
}

void UDIIMGRelease(HUDIIMAGE image) noexcept {
    // The last reference on a view drops one on its base: a loop, as chains may be long.
    while (image && image->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        const HUDIIMAGE base = image->base;
        delete image;
        image = base;
    }
}

RIMAGE* UDIIMGGetBaseImage(HUDIIMAGE image) noexcept {
    if (!image) return nullptr;
    while (image->base)
        image = image->base;
    return image->raster.get();
}

HUDIIMAGE UDIIMGFromTmpFile(std::uint32_t id) noexcept {
    return static_cast<HUDIIMAGE>(TMPGetPrivateData(id));
}

void FILLD_ZapTmpFileUdiImage(std::uint32_t& id) noexcept {
    const HUDIIMAGE image = UDIIMGFromTmpFile(id);
    TMPDeleteTmpFile(id);
    UDIIMGRelease(image);
    id = 0;
}

std::uint32_t UDIIMGDuplicateTmpFile(std::uint32_t id) {
    const HUDIIMAGE image = UDIIMGDuplicate(UDIIMGFromTmpFile(id));
    try {
        const std::uint32_t copy = TMPDuplicateTmpFile(id);
        if (copy == 0) UDIIMGRelease(image);
        return copy;
    } catch (...) {
        UDIIMGRelease(image);
        throw;
    }
}

std::size_t host::LiveImages() noexcept {
    return liveImages.load(std::memory_order_relaxed);
}
