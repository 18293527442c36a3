#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/gfx/fill.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

#include "pool/external_data.h"
#include "pool/outline_stream.h"

namespace VyrFOM {

// The forms are in docs/formats/stream_records.md. What is written is made before, so that memory that runs
// out leaves the stream alone.

/// The stream record of a fill: a current section, a 12.50 one and the end.
class FillStreamRecord {
public:
    /// The fill stays alive meanwhile. Throws bad_alloc.
    FillStreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream);

private:
    std::uint64_t GetLinesSize() const noexcept;
    void WriteLines(AbstractFileStream& stream) const;

    std::vector<std::uint8_t> m_bytes;  // all but hatch lines and external data
    std::size_t m_legacyAt = 0;         // where the 12.50 section begins
    std::span<const CGE_HATCHLINE> m_lines;
    std::vector<OutlineStreamRecord> m_pens;  // of m_lines
    ExternalData m_external;
};
/// Replaces `fill` by the first section that is known. Throws bad_alloc; what `fill` is then is not said.
void ReadFillRecord(AbstractFileStream& stream, CGE_FILL& fill, udi::PtrRemapper& remapper);

/// The record in documents before 12.50.
class Fill1200StreamRecord {
public:
    /// The bitmap of the fill stays alive meanwhile. Throws bad_alloc.
    Fill1200StreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream, unsigned userData);

private:
    CgeFillType m_kind;
    std::vector<std::uint8_t> m_record;
    ExternalData m_external;
};
/// Throws bad_alloc.
CGE_FILL ReadFill1200(AbstractFileStream& stream, unsigned& userData, udi::PtrRemapper& remapper);

}  // namespace VyrFOM
