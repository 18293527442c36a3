#include <memory>
#include <type_traits>

#include "host/base/temp_data.h"
#include "host/services/calls.h"

#include "fom/fill_defaults.h"

#include "fill/default_tile.h"

namespace {

constexpr RECT kNewPatternBox{0, 500000, 500000, 0};
constexpr RECT kUnitBox{0, 0, 1, 1};
constexpr std::int32_t kHalfInch = 127000;
constexpr std::uint16_t kLargestResolution = 10000;
constexpr std::uint16_t kSmallestMaxEdge = 33;
constexpr std::uint16_t kDefaultMaxEdge = 2049;
constexpr std::size_t kNameBuffer = 32;

struct ReleaseImage {
    void operator()(HUDIIMAGE image) const noexcept { UDIIMGRelease(image); }
};
using ImageReference = std::unique_ptr<std::remove_pointer_t<HUDIIMAGE>, ReleaseImage>;

std::int32_t GetHorizontalTileSize() {
    return VyrFOM::GetDefaultTileSize(host::Installed().units.GetHorizontalRulerUnit());
}

/// What was owned is freed; `tile` is the edge of a square tile.
void InitPattern(CGE_PATTERNFILL& pattern, std::int32_t tile) noexcept {
    pattern.Clear();
    pattern.tiling.width = tile;
    pattern.tiling.height = tile;
    pattern.boundingBox = kNewPatternBox;
    pattern.originalBoundingBox = kNewPatternBox;
}

/// The texture that the user took last, with sizes that can be rendered.
CGE_TXRINFO GetLastUsedTexture() {
    CGE_TXRINFO info;
    wchar_t library[kNameBuffer] = {};
    TXRSVR_GetLastUsedLib(library);
    TXRSVR_GetLastUsedTextureInLib(library, &info);
    // No library yet: the engine answers with the one that stands for that, and names it.
    if (library[0] != L'\0') info.library.Set(library);
    if (info.resolution == 0 || info.resolution > kLargestResolution) info.resolution = UDIGetRasterDPI();
    if (info.maxEdge < kSmallestMaxEdge) info.maxEdge = kDefaultMaxEdge;
    return info;
}

}  // namespace

void FILLSetDefaultCGEMonoBitmap(CGE_MONOBMPFILL* mono) {
    FILLSetDefaultCGEMonoBitmapEx(mono, 1);
}

void FILLSetDefaultCGEMonoBitmapEx(CGE_MONOBMPFILL* mono, int withBitmap) {
    if (!mono) return;
    const host::Services& services = host::Installed();
    CGE_TILING tiling;
    tiling.width = GetHorizontalTileSize();
    tiling.height = VyrFOM::GetDefaultTileSize(services.units.GetVerticalRulerUnit());
    mono->bitmap = withBitmap != 0 ? services.monoPatterns.GetPattern(0) : nullptr;
    mono->tiling = tiling;
    mono->foreground.MakeCMYKBlack();
    mono->background.MakeCMYKWhite();
    mono->screen.Init();
}

void FILLInternalSetDefaultCGEMonoBitmap(CGE_FILL* fill, int withBitmap) {
    if (fill) FILLSetDefaultCGEMonoBitmapEx(&fill->EditMonoBitmap(), withBitmap);
}

void FILLInitCGEVector(CGE_VECTORFILL* vector) {
    if (vector) InitPattern(*vector, GetHorizontalTileSize());
}

void FILLSetDefaultCGEVector(CGE_VECTORFILL* vector) {
    if (!vector) return;
    FILLInitCGEVector(vector);
    vector->AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
}

void FILLSetDefaultTextureVectorInfo(CGE_VECTORFILL* vector) {
    if (!vector) return;
    FILLInitCGEVector(vector);
    vector->tiling.width = 100;
    vector->tiling.height = 100;
    vector->tiling.flags = kTilingScaleWithObject;
}

void RCF_SetDefaultCGEVector(CGE_VECTORFILL* vector) {
    if (!vector) return;
    vector->Clear();
    vector->AdoptPatternData(MEMMANAlloc(kPatternDataSize, false));
    vector->tiling.width = kHalfInch;
    vector->tiling.height = kHalfInch;
    vector->boundingBox = kUnitBox;
    vector->originalBoundingBox = kUnitBox;
}

void FILLSetDefaultCGEColorBitmap(CGE_COLORBMPFILL* bitmap) {
    if (!bitmap) return;
    const std::vector<host::WString> names = host::Installed().patternImages.GetBitmapNames();
    const std::int32_t tile = GetHorizontalTileSize();
    ImageReference image(GetImageUsingName(names.empty() ? L"" : names.front().c_str()));
    const unsigned id = image ? TMPRegisterPrivateData(image.get()) : 0;
    if (id != 0) static_cast<void>(image.release());  // the temporary data holds the reference now
    InitPattern(*bitmap, tile);
    bitmap->AdoptTmpFile(id);
}

void FILLSetDefaultCGETexture(CGE_TEXTUREFILL* texture) {
    if (!texture) return;
    const CGE_TXRINFO info = GetLastUsedTexture();
    const std::int32_t tile = GetHorizontalTileSize();
    InitPattern(*texture, tile);
    texture->AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
    texture->info = info;
}
