#pragma once

#include <cstdint>
#include <vector>

#include "host/base/memory.h"
#include "host/gfx/outline.h"
#include "host/stream/file_stream.h"
#include "host/stream/ptr_remapper.h"

namespace VyrFOM {

/// The stream record of an outline, made before anything is written: docs/formats/stream_records.md.
class OutlineStreamRecord {
public:
    /// The arrowheads stay alive meanwhile. Throws bad_alloc.
    OutlineStreamRecord(const CGE_OUTLINE& outline, udi::PtrRemapper& remapper);

    /// Bytes that WriteTo writes.
    std::uint32_t GetSize() const noexcept;
    void WriteTo(AbstractFileStream& stream) const noexcept;
    /// For one of many.
    void DropSpareRoom() { m_bytes.shrink_to_fit(); }

private:
    std::vector<std::uint8_t> m_bytes;  // length and body
    HMEM m_leftArrow;
    HMEM m_rightArrow;
};

/// False, the good flag cleared and `outline` no outline, for a body that is none; what it was followed by is
/// not known then. Throws bad_alloc, with `outline` as it was.
bool ReadOutlineRecord(AbstractFileStream& stream, CGE_OUTLINE& outline, udi::PtrRemapper& remapper);

/// The form of documents before 12.50.
void WriteOutline12(AbstractFileStream& stream, const CGE_OUTLINE& outline, udi::PtrRemapper& remapper);
void ReadOutline12(AbstractFileStream& stream, CGE_OUTLINE& outline, udi::PtrRemapper& remapper);

}  // namespace VyrFOM
