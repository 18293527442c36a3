#pragma once

#include <cstdint>
#include <vector>

#include "host/gfx/fill.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

#include "fom/legacy_records.h"

#include "pool/external_data.h"
#include "pool/outline_stream.h"

namespace VyrFOM {

// The forms are in docs/formats/stream_records.md. What is written is made before, so that memory that runs
// out leaves the stream alone.

/// The stream record of a fill: a current section, a 12.50 one and the end.
class FillStreamRecord {
public:
    /// The bitmap and the arrowheads of the fill stay alive meanwhile. Throws bad_alloc.
    FillStreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream);

private:
    void WriteCurrent(AbstractFileStream& stream);
    void WriteLegacy(AbstractFileStream& stream);
    void WriteLines(AbstractFileStream& stream) const;

    CgeFillType m_kind;
    std::vector<std::uint8_t> m_body;
    CGE_FILL_1250 m_legacy;
    std::vector<OutlineStreamRecord> m_pens;  // of the hatch lines of m_legacy
    ExternalData m_external;
};
/// The first section that is known. Throws bad_alloc.
CGE_FILL ReadFillRecord(AbstractFileStream& stream, udi::PtrRemapper& remapper);

/// The record in documents before 12.50.
class Fill1200StreamRecord {
public:
    /// The bitmap of the fill stays alive meanwhile. Throws bad_alloc.
    Fill1200StreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper);
    void WriteTo(AbstractFileStream& stream, unsigned userData);

private:
    CGE_FILL_1200 m_legacy;
    ExternalData m_external;
};
/// Throws bad_alloc.
CGE_FILL ReadFill1200(AbstractFileStream& stream, unsigned& userData, udi::PtrRemapper& remapper);

}  // namespace VyrFOM
