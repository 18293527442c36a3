#include "pool/outline_stream.h"

#include "host/base/little_endian.h"
#include "host/gfx/arrowhead.h"
#include "host/stream/archive.h"

#include "fom/legacy_records.h"
#include "fom/serialization.h"

#include "pool/record_body.h"
#include "pool/stream_bytes.h"

namespace VyrFOM {

namespace {

/// What stands before the body: its length.
constexpr std::size_t kLength = sizeof(std::uint32_t);

bool IsNone(const CGE_OUTLINE& outline) noexcept {
    return (outline.type & 15) == OutlineNone;
}

/// In documents before 12.50 an arrowhead field may be set where there is no arrowhead: an empty block
/// follows.
enum class EmptyArrow { IsAnArrow, IsNone };

/// Puts the blocks that follow, for arrowhead fields that are set, in the place of what the record was told
/// about them.
void ReadArrows(AbstractFileStream& stream, CGE_OUTLINE& outline, EmptyArrow empty) {
    for (HMEM* arrow : {&outline.leftArrow, &outline.rightArrow}) {
        if (!*arrow) continue;
        *arrow = nullptr;
        const std::uint32_t size = ReadWord(stream);
        OwnedBlock block = ReadBlock(stream, size);
        const bool keep = !IsNone(outline) && (size != 0 || empty == EmptyArrow::IsAnArrow);
        if (keep) *arrow = SUDIRegisterArrow(block.release());
    }
    if (IsNone(outline)) outline.SetToNoOutline();
}

}  // namespace

OutlineStreamRecord::OutlineStreamRecord(const CGE_OUTLINE& outline, udi::PtrRemapper& remapper)
    : m_bytes(MakeBody(outline, remapper, kLength)),
      m_leftArrow(outline.leftArrow),
      m_rightArrow(outline.rightArrow) {
    host::StoreLittle(m_bytes.data(), static_cast<std::uint32_t>(m_bytes.size() - kLength));
}

std::uint32_t OutlineStreamRecord::GetSize() const noexcept {
    auto size = static_cast<std::uint32_t>(m_bytes.size());
    for (const HMEM arrow : {m_leftArrow, m_rightArrow})
        if (arrow) size += StoredSize(arrow) + 4;
    return size;
}

void OutlineStreamRecord::WriteTo(AbstractFileStream& stream) const noexcept {
    WriteBytes(stream, m_bytes);
    for (const HMEM arrow : {m_leftArrow, m_rightArrow})
        if (arrow) WriteBlock(stream, arrow);
}

bool ReadOutlineRecord(AbstractFileStream& stream, CGE_OUTLINE& outline, udi::PtrRemapper& remapper) {
    CGE_OUTLINE loaded;
    const bool whole = LoadBody(loaded, ReadBytes(stream, ReadWord(stream)), remapper);
    if (!whole) stream.SetGood(false);
    ReadArrows(stream, loaded, EmptyArrow::IsAnArrow);
    outline = loaded;
    return whole;
}

void WriteOutline12(AbstractFileStream& stream, const CGE_OUTLINE& outline, udi::PtrRemapper& remapper) {
    CGE_OUTLINE_12xx legacy;
    CGE_OUTLINE copy = outline;
    FOMIO12Conv::ConvertCGE_OUTLINE(false, copy, legacy, FOMSerialization::GetColorContext(), remapper);
    WriteBytes(stream, legacy.bytes);
    if (IsNone(outline)) return;
    for (const HMEM arrow : {outline.leftArrow, outline.rightArrow})
        if (arrow) WriteBlock(stream, arrow);
}

void ReadOutline12(AbstractFileStream& stream, CGE_OUTLINE& outline, udi::PtrRemapper& remapper) {
    CGE_OUTLINE_12xx legacy;
    stream.Read(legacy.bytes.data(), legacy.bytes.size());
    CGE_OUTLINE loaded;
    FOMIO12Conv::ConvertCGE_OUTLINE(true, loaded, legacy, FOMSerialization::GetColorContext(), remapper);
    ReadArrows(stream, loaded, EmptyArrow::IsNone);
    outline = loaded;
}

}  // namespace VyrFOM

std::vector<std::uint8_t> FOMOutlineSerialization::MakeBody(const CGE_OUTLINE& record,
                                                            udi::PtrRemapper& remapper) {
    return VyrFOM::MakeBody(record, remapper);
}

void FOMOutlineSerialization::WriteTo(AbstractFileStream& stream, const CGE_OUTLINE& record,
                                      udi::PtrRemapper& remapper) {
    VyrFOM::OutlineStreamRecord(record, remapper).WriteTo(stream);
}

void FOMOutlineSerialization::ReadFrom(AbstractFileStream& stream, CGE_OUTLINE& record,
                                       udi::PtrRemapper& remapper) {
    VyrFOM::ReadOutlineRecord(stream, record, remapper);
}
