#include <algorithm>
#include <array>
#include <utility>

#include "host/gfx/image.h"
#include "host/gfx/image_stream.h"
#include "host/services/calls.h"

#include "fom/mono_bitmap_manager.h"
#include "fom/serialization.h"

#include "pool/external_data.h"
#include "pool/stream_bytes.h"
#include "pool/temp_entry.h"

namespace VyrFOM {

namespace {

/// For the preview of a texture whose description does not say how large it is.
constexpr std::uint16_t kDefaultTextureEdge = 2049;
constexpr std::uint16_t kPreviewEdge = 256;
constexpr unsigned kPreviewTag = 128;

struct ReleaseImage {
    void operator()(HUDIIMAGE image) const noexcept { UDIIMGRelease(image); }
};
using OwnedImage = std::unique_ptr<UDIIMAGE, ReleaseImage>;

/// An entry that holds the image's reference; 0 for null.
std::uint32_t RegisterImage(OwnedImage image) {
    if (!image) return 0;
    const unsigned id = TMPRegisterPrivateData(image.get());
    image.release();
    return id;
}

/// The next `size` bytes, or as many as there are and find room. False for fewer; the stream is past them in
/// any case.
bool CopyToTmpFile(AbstractFileStream& stream, std::uint32_t size, unsigned id) {
    const auto to = TMPOpenTmpFile(id, TmpMode::Write);
    std::array<std::uint8_t, kPieceSize> piece;
    while (size != 0) {
        const std::size_t step = std::min<std::size_t>(piece.size(), size);
        const std::size_t got = stream.Read(piece.data(), step);
        size -= static_cast<std::uint32_t>(step);
        const bool stored = to && to->Write(piece.data(), got) == got;
        if (got < step) return false;
        if (!stored) {
            stream.SetGood(false);
            SkipBytes(stream, size);
            return false;
        }
    }
    return true;
}

void ReadBitmap(AbstractFileStream& stream, CGE_MONOBMPFILL& fill) {
    fill.bitmap = nullptr;
    OwnedBlock block = ReadBlock(stream, ReadWord(stream));
    FOMMonoBmpMgr* const manager = FOMMonoBmpMgr::GetInst();
    if (!manager) return;
    fill.bitmap = manager->AddOrGetBitmap(block.get());
    block.release();
}

/// Null for what is no image.
OwnedImage ReadImage(AbstractFileStream& stream, std::uint32_t size) {
    const TempEntry entry(TMPCreateTmpFile());
    if (!CopyToTmpFile(stream, size, entry.Get())) return nullptr;
    const auto from = TMPOpenTmpFile(entry.Get());
    OwnedImage image(from ? UDII_ReadImage(*from, FOMSerialization::GetColorContext()) : nullptr);
    if (!image) stream.SetGood(false);
    return image;
}

void ReadColorBitmap(AbstractFileStream& stream, CGE_COLORBMPFILL& fill) {
    const bool named = fill.tmpFile != 0;
    fill.AdoptTmpFile(0);
    const std::uint32_t size = ReadWord(stream);
    if (named && size != 0)
        fill.AdoptTmpFile(RegisterImage(ReadImage(stream, size)));
    else
        SkipBytes(stream, size);
}

void ReadVector(AbstractFileStream& stream, CGE_VECTORFILL& fill) {
    fill.AdoptTmpFile(0);
    const std::uint32_t size = ReadWord(stream);
    if (size == 0) return;
    fill.AdoptTmpFile(TMPCreateTmpFile());
    CopyToTmpFile(stream, size, fill.tmpFile);
}

/// Textures are rendered again instead of being stored.
void MakePreview(CGE_TEXTUREFILL& fill) {
    CGE_TXRINFO& info = fill.info;
    if (info.maxEdge == 0) info.maxEdge = kDefaultTextureEdge;
    if (info.resolution == 0) info.resolution = UDIGetRasterDPI();
    const std::uint32_t edge = std::min(info.maxEdge, kPreviewEdge);
    OwnedImage image(UDIIMGCreateFromRIMAGE(TXRSVR_ExecuteTextureExactSizeToRImage(info, edge, edge)));
    fill.AdoptTmpFile(RegisterImage(std::move(image)));
    TMPSetTmpFileTag(fill.tmpFile, kPreviewTag);
    FOMSerialization::SetTextureLoaded(true);
}

void ReadTexture(AbstractFileStream& stream, CGE_FILL& fill) {
    CGE_TEXTUREFILL& texture = fill.EditTexture();
    texture.AdoptTmpFile(0);
    const std::uint32_t size = ReadWord(stream);
    if (size == 0)
        MakePreview(texture);
    else
        SkipBytes(stream, size);
    if (texture.patternData) return;
    texture.AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
    if (!texture.patternData) fill.Clear();
}

}  // namespace

bool NamesExternalData(const CGE_FILL& fill) noexcept {
    switch (fill.GetType()) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return fill.MonoBitmap().bitmap != nullptr;
        case FillVector:
            return fill.Vector().tmpFile != 0;
        default:
            return false;
    }
}

void ReadExternalData(AbstractFileStream& stream, CGE_FILL& fill) {
    const bool named = NamesExternalData(fill);
    switch (fill.GetType()) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            if (named) ReadBitmap(stream, fill.EditMonoBitmap());
            break;
        case FillColorBitmap:
            ReadColorBitmap(stream, fill.EditColorBitmap());
            break;
        case FillVector:
            if (named) ReadVector(stream, fill.EditVector());
            break;
        case FillTexture:
            ReadTexture(stream, fill);
            break;
        default:
            break;
    }
}

void SkipExternalData(AbstractFileStream& stream, CgeFillType kind, bool named) noexcept {
    switch (kind) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
        case FillVector:
            if (named) SkipBytes(stream, ReadWord(stream));
            break;
        case FillColorBitmap:
        case FillTexture:
            SkipBytes(stream, ReadWord(stream));
            break;
        default:
            break;
    }
}

}  // namespace VyrFOM
