#include <algorithm>
#include <array>
#include <limits>

#include "host/base/little_endian.h"

#include "fom/serialization.h"

#include "pool/fill_stream.h"
#include "pool/fill_stream_legacy.h"
#include "pool/fill_stream_sections.h"
#include "pool/record_body.h"
#include "pool/stream_bytes.h"

namespace VyrFOM {

namespace {

std::uint32_t SectionSize(std::uint64_t size) noexcept {
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(size, std::numeric_limits<std::uint32_t>::max()));
}

std::vector<OutlineStreamRecord> PensOf(const std::vector<CGE_HATCHLINE>& lines, udi::PtrRemapper& remapper) {
    std::vector<OutlineStreamRecord> pens;
    pens.reserve(lines.size());
    for (const CGE_HATCHLINE& line : lines)
        pens.emplace_back(line.pen, remapper);
    return pens;
}

}  // namespace

FillStreamRecord::FillStreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper)
    : m_kind(fill.GetType()),
      m_body(BodyOf(fill, remapper)),
      m_legacy(ToLegacy<CGE_FILL_1250>(fill, remapper)),
      m_pens(PensOf(m_legacy.lines, remapper)),
      m_external(fill) {}

void FillStreamRecord::WriteTo(AbstractFileStream& stream) {
    WriteCurrent(stream);
    WriteLegacy(stream);
    WriteWords(stream, {kEndTag, 0});
}

void FillStreamRecord::WriteCurrent(AbstractFileStream& stream) {
    const std::uint64_t size = kSectionHead + m_body.size() + m_external.GetAnnouncedSize();
    WriteWords(stream, {kCurrentTag, SectionSize(size), m_kind, static_cast<std::uint32_t>(m_body.size())});
    WriteBytes(stream, m_body);
    m_external.WriteTo(stream);
}

void FillStreamRecord::WriteLegacy(AbstractFileStream& stream) {
    std::uint64_t size = kSectionHead + m_legacy.bytes.size() + m_external.GetAnnouncedSize();
    for (const OutlineStreamRecord& pen : m_pens)
        size += kLineHead + pen.GetSize();
    WriteWords(stream, {kLegacyTag, SectionSize(size), m_legacy.GetType(),
                        static_cast<std::uint32_t>(m_legacy.bytes.size())});
    WriteBytes(stream, m_legacy.bytes);
    WriteLines(stream);
    m_external.WriteTo(stream);
}

void FillStreamRecord::WriteLines(AbstractFileStream& stream) const {
    for (std::size_t i = 0; i < m_pens.size(); ++i) {
        const CGE_HATCHLINE& line = m_legacy.lines[i];
        std::array<std::uint8_t, kLineHead> head;
        host::LittleWriter writer(head.data());
        for (const std::int32_t field : {line.origin.x, line.origin.y, line.offset, line.spacing, line.angle})
            writer.Write(field);
        stream.Write(head.data(), head.size());
        m_pens[i].WriteTo(stream);
    }
}

Fill1200StreamRecord::Fill1200StreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper)
    : m_legacy(ToLegacy<CGE_FILL_1200>(fill, remapper)), m_external(fill) {
    if (m_legacy.GetType() > CGE_FILL_1200::kLastKind) m_legacy.SetType(FillNone);
}

void Fill1200StreamRecord::WriteTo(AbstractFileStream& stream, unsigned userData) {
    WriteWords(stream, {m_legacy.GetType(), static_cast<std::uint32_t>(m_legacy.bytes.size()), userData});
    WriteBytes(stream, m_legacy.bytes);
    m_external.WriteTo(stream);
}

}  // namespace VyrFOM

void FOMFillSerialization::WriteTo(AbstractFileStream& stream, CGE_FILL& record, udi::PtrRemapper& remapper) {
    VyrFOM::FillStreamRecord(record, remapper).WriteTo(stream);
}
