#include "fill/fill_hash.h"

#include "host/color/convert.h"

namespace VyrFOM {
namespace {

void HashBlock(host::Hasher& hasher, HMEM block) noexcept {
    const std::size_t size = MEMMANGetSize(block);
    hasher.Word(size);
    if (const void* bytes = MEMMANLock(block)) {
        hasher.Bytes(bytes, size);
        MEMMANUnlock(block);
    }
}

void HashHatchLine(host::Hasher& hasher, const CGE_HATCHLINE& line) noexcept {
    hasher.Bytes(&line.origin, sizeof line.origin);
    hasher.Word(static_cast<std::uint32_t>(line.offset) |
                std::uint64_t{static_cast<std::uint32_t>(line.spacing)} << 32);
    hasher.Word(static_cast<std::uint32_t>(line.angle));
    line.pen.HashInto(hasher);
}

void HashPostScript(host::Hasher& hasher, const CGE_PSFILL& postScript) noexcept {
    static_assert(sizeof(CGE_PSFILL) == 14);
    hasher.Bytes(&postScript, sizeof postScript);
}

void HashTexture(host::Hasher& hasher, const CGE_TEXTUREFILL& texture) noexcept {
    HashPatternHeader(hasher, texture);
    HashTextureInfo(hasher, texture.info);
}

}  // namespace

void HashTextureInfo(host::Hasher& hasher, const CGE_TXRINFO& info) noexcept {
    hasher.Word(std::uint64_t{info.present != 0} | std::uint64_t{info.resolution} << 16 |
                std::uint64_t{info.maxEdge} << 32);
    hasher.Word(host::HashFolded(info.library.Units()));
    hasher.Word(host::HashFolded(info.texture.Units()));
    hasher.Word(host::HashFolded(info.style.Units()));
    hasher.Bytes(info.parameters.data(), info.parameters.size());
}

void HashMonoBitmap(host::Hasher& hasher, const CGE_MONOBMPFILL& mono) noexcept {
    HashBlock(hasher, mono.bitmap);
    HashTiling(hasher, mono.tiling);
    host::HashColorInto(hasher, mono.foreground);
    host::HashColorInto(hasher, mono.background);
    const bool spot = mono.foreground.IsSpot() || mono.background.IsSpot();
    HashScreen(hasher, mono.screen, spot ? 0 : mono.screen.overprint, mono.engineSwitch);
}

void HashHatch(host::Hasher& hasher, const CGE_HATCHFILL& hatch) noexcept {
    // Colours without a model are all equal.
    if (hatch.background.GetModel() == ClrModel::None)
        hasher.Word(0);
    else
        host::HashColorInto(hasher, hatch.background);
    HashScreen(hasher, hatch.screen, hatch.screen.overprint);
    hasher.Word(hatch.modification);
    hasher.Double(hatch.spacingMultiplier);
    hasher.Double(hatch.thicknessMultiplier);
    hasher.Word(host::HashFolded(hatch.library.Units()));
    hasher.Word(host::HashFolded(hatch.name.Units()));
    hasher.Word(hatch.lines.size());
    for (const CGE_HATCHLINE& line : hatch.lines)
        HashHatchLine(hasher, line);
}

void HashOtherFillInto(host::Hasher& hasher, const CGE_FILL& fill) noexcept {
    hasher.Word(fill.GetType());
    switch (fill.GetType()) {
        case FillFountain:
            return fill.Fountain().HashInto(hasher);
        case FillPostScript:
            return HashPostScript(hasher, fill.PostScript());
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return HashMonoBitmap(hasher, fill.MonoBitmap());
        case FillColorBitmap:
            return HashPatternHeader(hasher, fill.ColorBitmap());
        case FillVector:
            HashRect(hasher, fill.Vector().originalBoundingBox);
            return HashPatternHeader(hasher, fill.Vector());
        case FillTexture:
            return HashTexture(hasher, fill.Texture());
        case FillHatch:
            return HashHatch(hasher, fill.Hatch());
        default:
            return;
    }
}

}  // namespace VyrFOM
