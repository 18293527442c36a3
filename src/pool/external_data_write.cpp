#include <algorithm>
#include <array>
#include <limits>

#include "host/gfx/image.h"
#include "host/gfx/image_stream.h"

#include "fom/serialization.h"

#include "pool/external_data.h"
#include "pool/stream_bytes.h"
#include "pool/temp_entry.h"

namespace VyrFOM {

ExternalData::ExternalData(const CGE_FILL& fill) : m_kind(fill.GetType()) {
    switch (m_kind) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            m_bitmap = fill.MonoBitmap().bitmap;
            break;
        case FillColorBitmap:
            TakeImage(fill.ColorBitmap());
            break;
        case FillVector:
            TakeTmpFile(fill.Vector());
            break;
        default:
            break;
    }
    if (m_content && m_content->GetSize() > std::numeric_limits<std::uint32_t>::max()) {
        m_content.reset();
        m_lost = true;
    }
    if (m_content) m_contentSize = static_cast<std::uint32_t>(m_content->GetSize());
}

void ExternalData::TakeImage(const CGE_COLORBMPFILL& fill) {
    const HUDIIMAGE image = UDIIMGFromTmpFile(fill.tmpFile);
    if (!image) return;
    const TempEntry entry(TMPCreateTmpFile());
    const auto written = TMPOpenTmpFile(entry.Get(), TmpMode::Write);
    m_lost =
        !written || !UDII_WriteImage(*written, image, kUdiImageFormat, FOMSerialization::GetColorContext());
    if (!m_lost) m_content = TMPOpenTmpFile(entry.Get());
}

void ExternalData::TakeTmpFile(const CGE_VECTORFILL& fill) {
    m_absent = fill.tmpFile == 0;
    m_content = TMPOpenTmpFile(fill.tmpFile);
}

std::uint32_t ExternalData::GetAnnouncedSize() const noexcept {
    switch (m_kind) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return StoredSize(m_bitmap) + 4;
        case FillColorBitmap:
        case FillVector:
        case FillTexture:
            return m_contentSize + 4;
        default:
            return 0;
    }
}

void ExternalData::WriteTo(AbstractFileStream& stream) {
    if (m_lost) stream.SetGood(false);
    switch (m_kind) {
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            if (m_bitmap) WriteBlock(stream, m_bitmap);
            break;
        case FillColorBitmap:
        case FillVector:
            if (!m_absent) WriteContent(stream);
            break;
        case FillTexture:
            WriteWords(stream, {0});
            break;
        default:
            break;
    }
}

void ExternalData::WriteContent(AbstractFileStream& stream) {
    WriteWords(stream, {m_contentSize});
    if (!m_content) return;
    std::array<std::uint8_t, kPieceSize> piece;
    m_content->Seek(0);
    for (std::size_t rest = m_contentSize; rest != 0;) {
        const std::size_t step = std::min(piece.size(), rest);
        const std::size_t got = m_content->Read(piece.data(), step);
        if (got < step) {
            std::fill(piece.begin() + static_cast<std::ptrdiff_t>(got), piece.end(), std::uint8_t{0});
            stream.SetGood(false);
        }
        stream.Write(piece.data(), step);
        rest -= step;
    }
}

}  // namespace VyrFOM
