#pragma once

#include <cstdint>
#include <memory>

#include "host/base/memory.h"
#include "host/base/temp_data.h"
#include "host/gfx/fill.h"
#include "host/stream/file_stream.h"

namespace VyrFOM {

/// What follows a fill's body in the stream, as its kind says: docs/formats/stream_records.md. It is made
/// before anything is written, so that memory that runs out leaves the stream alone, and serves every
/// section.
class ExternalData {
public:
    /// `fill` keeps its bitmap meanwhile. Throws bad_alloc.
    explicit ExternalData(const CGE_FILL& fill);

    /// What it adds to the size of its section: the bytes that WriteTo writes, and 4 for a mono bitmap fill
    /// without a bitmap and a vector fill without data, for which nothing is written.
    std::uint32_t GetAnnouncedSize() const noexcept;
    /// Of a kind that has none.
    bool IsNothing() const noexcept { return GetAnnouncedSize() == 0; }
    /// What is there but cannot be read clears the good flag, and zeros stand for it. Data that is gone
    /// already, as that of a vector fill whose entry was deleted, is written as empty.
    void WriteTo(AbstractFileStream& stream);

private:
    void TakeImage(const CGE_COLORBMPFILL& fill);
    void TakeTmpFile(const CGE_VECTORFILL& fill);
    void WriteContent(AbstractFileStream& stream);

    CgeFillType m_kind;
    HMEM m_bitmap = nullptr;
    bool m_absent = false;                 // a vector fill without data
    bool m_lost = false;                   // there was something that the stream cannot get
    std::unique_ptr<TmpStream> m_content;  // of kinds 9 and 10
    std::uint32_t m_contentSize = 0;
};

/// Whether data follows the record where that is not always so: for a mono bitmap or vector fill.
bool NamesExternalData(const CGE_FILL& fill) noexcept;
/// Reads what follows the record that `fill` was loaded from. It takes the place of what the record says of
/// it, which belongs to nobody (a mono bitmap) or is an entry without content. Throws bad_alloc, with the
/// fill owning what it has.
void ReadExternalData(AbstractFileStream& stream, CGE_FILL& fill);
/// Reads past it. `named`: as NamesExternalData answers for the record.
void SkipExternalData(AbstractFileStream& stream, CgeFillType kind, bool named) noexcept;

}  // namespace VyrFOM
