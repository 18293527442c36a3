#include <algorithm>
#include <array>
#include <limits>

#include "host/base/little_endian.h"

#include "fom/legacy_records.h"
#include "fom/serialization.h"

#include "pool/fill_stream.h"
#include "pool/fill_stream_sections.h"
#include "pool/legacy_fill.h"
#include "pool/record_body.h"
#include "pool/stream_bytes.h"

namespace VyrFOM {

namespace {

/// Tag, size, kind and length of the record open a section. Its size counts the last two.
constexpr std::size_t kTagAndSize = 8;
constexpr std::size_t kHead = kTagAndSize + kSectionHead;

/// The head of a section that begins at `start` and whose record ends at `end`; `more` bytes follow.
void WriteHead(std::span<std::uint8_t> bytes, std::size_t start, std::size_t end, std::uint32_t tag,
               CgeFillType kind, std::uint64_t more) noexcept {
    const std::size_t length = end - start - kHead;
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint32_t>::max();
    host::LittleWriter writer(&bytes[start]);
    writer.Write(tag);
    writer.Write(static_cast<std::uint32_t>(std::min(kSectionHead + length + more, kMax)));
    writer.Write(std::uint32_t{kind});
    writer.Write(static_cast<std::uint32_t>(length));
}

std::span<const CGE_HATCHLINE> LinesOf(const CGE_FILL& fill) noexcept {
    if (fill.GetType() != FillHatch) return {};
    return fill.Hatch().lines;
}

std::vector<OutlineStreamRecord> PensOf(std::span<const CGE_HATCHLINE> lines, udi::PtrRemapper& remapper) {
    std::vector<OutlineStreamRecord> pens;
    pens.reserve(lines.size());
    for (const CGE_HATCHLINE& line : lines)
        pens.emplace_back(line.pen, remapper).DropSpareRoom();
    return pens;
}

}  // namespace

FillStreamRecord::FillStreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper)
    : m_lines(LinesOf(fill)), m_external(fill) {
    std::vector<std::uint8_t> bytes = MakeBody(fill, remapper, kHead);
    const CgeFillType kind = fill.GetType();
    m_legacyAt = bytes.size();
    WriteHead(bytes, 0, m_legacyAt, kCurrentTag, kind, m_external.GetAnnouncedSize());

    const std::size_t length = GetLegacyFillSize<1250>(fill);
    const std::size_t end = m_legacyAt + kHead + length;
    bytes.resize(end + kTagAndSize);  // the end's are zeros
    WriteLegacyFill<1250>(std::span(bytes).subspan(end - length, length), fill,
                          FOMSerialization::GetColorContext(), remapper);
    m_pens = PensOf(m_lines, remapper);
    WriteHead(bytes, m_legacyAt, end, kLegacyTag, kind, GetLinesSize() + m_external.GetAnnouncedSize());
    m_bytes.swap(bytes);
}

std::uint64_t FillStreamRecord::GetLinesSize() const noexcept {
    std::uint64_t size = 0;
    for (const OutlineStreamRecord& pen : m_pens)
        size += kLineHead + pen.GetSize();
    return size;
}

void FillStreamRecord::WriteTo(AbstractFileStream& stream) {
    const std::span<const std::uint8_t> bytes = m_bytes;
    if (m_pens.empty() && m_external.IsNothing()) return WriteBytes(stream, bytes);
    const std::size_t endAt = bytes.size() - kTagAndSize;
    WriteBytes(stream, bytes.first(m_legacyAt));
    m_external.WriteTo(stream);
    WriteBytes(stream, bytes.subspan(m_legacyAt, endAt - m_legacyAt));
    WriteLines(stream);
    m_external.WriteTo(stream);
    WriteBytes(stream, bytes.subspan(endAt));
}

void FillStreamRecord::WriteLines(AbstractFileStream& stream) const {
    for (std::size_t i = 0; i < m_pens.size(); ++i) {
        const CGE_HATCHLINE& line = m_lines[i];
        std::array<std::uint8_t, kLineHead> head;
        host::LittleWriter writer(head.data());
        for (const std::int32_t field : {line.origin.x, line.origin.y, line.offset, line.spacing, line.angle})
            writer.Write(field);
        stream.Write(head.data(), head.size());
        m_pens[i].WriteTo(stream);
    }
}

Fill1200StreamRecord::Fill1200StreamRecord(const CGE_FILL& fill, udi::PtrRemapper& remapper)
    : m_kind(fill.GetType() <= CGE_FILL_1200::kLastKind ? fill.GetType() : FillNone),
      m_record(GetLegacyFillSize<1200>(fill)),
      m_external(fill) {
    if (m_kind == FillNone) return;
    WriteLegacyFill<1200>(m_record, fill, FOMSerialization::GetColorContext(), remapper);
}

void Fill1200StreamRecord::WriteTo(AbstractFileStream& stream, unsigned userData) {
    WriteWords(stream, {m_kind, static_cast<std::uint32_t>(m_record.size()), userData});
    WriteBytes(stream, m_record);
    m_external.WriteTo(stream);
}

}  // namespace VyrFOM

std::vector<std::uint8_t> FOMFillSerialization::MakeBody(const CGE_FILL& record, udi::PtrRemapper& remapper) {
    return VyrFOM::MakeBody(record, remapper);
}

void FOMFillSerialization::WriteTo(AbstractFileStream& stream, CGE_FILL& record, udi::PtrRemapper& remapper) {
    VyrFOM::FillStreamRecord(record, remapper).WriteTo(stream);
}
