#include <algorithm>
#include <array>
#include <utility>

#include "host/base/little_endian.h"
#include "host/base/memory.h"

#include "fom/serialization.h"

#include "pool/fill_stream.h"
#include "pool/fill_stream_legacy.h"
#include "pool/fill_stream_sections.h"
#include "pool/record_body.h"
#include "pool/stream_bytes.h"

namespace VyrFOM {

namespace {

// In the 12.50 record: what says whether data follows for a mono bitmap and for a vector fill.
constexpr std::size_t kBitmapAt = 8;
constexpr std::size_t kTmpFileAt = 48;
/// A line with a pen of no bytes.
constexpr std::size_t kSmallestLine = kLineHead + 4;

/// A hatch body names the arrowheads of its pens, but no blocks follow it: those of the 12.50 section, whose
/// lines have theirs, stand for them. What nobody has is no arrowhead.
void FindArrows(CGE_FILL& fill, const std::vector<CGE_HATCHLINE>& lines) {
    if (fill.GetType() != FillHatch || fill.Hatch().lines.empty()) return;
    std::vector<CGE_HATCHLINE>& wanting = fill.EditHatch().lines;
    for (std::size_t i = 0; i < wanting.size(); ++i)
        for (HMEM CGE_OUTLINE::*arrow : {&CGE_OUTLINE::leftArrow, &CGE_OUTLINE::rightArrow})
            if (wanting[i].pen.*arrow == host::UnresolvedBlock())
                wanting[i].pen.*arrow = lines.size() == wanting.size() ? lines[i].pen.*arrow : nullptr;
}

bool ReadLine(AbstractFileStream& stream, CGE_HATCHLINE& line) noexcept {
    std::array<std::uint8_t, kLineHead> head;
    if (stream.Read(head.data(), head.size()) != head.size()) return false;
    host::LittleReader reader(head);
    for (std::int32_t* field : {&line.origin.x, &line.origin.y, &line.offset, &line.spacing, &line.angle})
        reader.Read(*field);
    return true;
}

/// Room for another line, when `more` are announced. Many lines are hostile ones, most likely: once, then,
/// for all that the rest of the stream can hold, or in small steps where the stream does not know its rest.
void MakeRoom(std::vector<CGE_HATCHLINE>& lines, const AbstractFileStream& stream, std::uint32_t more) {
    constexpr std::uint64_t kFew = 1024;
    if (lines.size() < lines.capacity()) return;
    std::uint64_t step = std::max<std::uint64_t>(lines.size(), 16);
    if (step >= kFew) {
        const auto rest = stream.GetRemaining();
        step = rest ? *rest / kSmallestLine + 1 : step / 8;
    }
    lines.reserve(lines.size() + static_cast<std::size_t>(std::min<std::uint64_t>(step, more)));
}

/// A line whose pen cannot be read is left out.
std::vector<CGE_HATCHLINE> ReadLines(AbstractFileStream& stream, std::uint32_t count,
                                     udi::PtrRemapper& remapper) {
    std::vector<CGE_HATCHLINE> lines;
    CGE_HATCHLINE line;
    for (; count != 0 && ReadLine(stream, line); --count) {
        if (!ReadOutlineRecord(stream, line.pen, remapper)) continue;
        MakeRoom(lines, stream, count);
        lines.push_back(line);
    }
    return lines;
}

/// Whether a record of the kind says what follows it.
bool SaysWhatFollows(CgeFillType kind) noexcept {
    return kind == FillMonoBitmap || kind == FillMonoBitmapAlt || kind == FillVector || kind == FillHatch;
}

/// Goes through the sections of one record.
class FillReader {
public:
    FillReader(AbstractFileStream& stream, CGE_FILL& fill, udi::PtrRemapper& remapper) noexcept
        : m_stream(stream), m_fill(fill), m_remapper(remapper) {}

    // Ends also when the stream does: a tag that is not there reads as the end's.
    void Read() {
        for (;;) {
            const auto [tag, size] = ReadWords(m_stream);
            if (tag == kEndTag) break;
            if (tag == kCurrentTag || tag == kLegacyTag)
                ReadSection(tag, size);
            else
                SkipBytes(m_stream, size);
        }
        if (!m_taken) m_fill = CGE_FILL();
        FindArrows(m_fill, {});
    }

private:
    void ReadSection(std::uint32_t tag, std::uint32_t size) {
        const auto [kind, length] = ReadWords(m_stream);
        if (length == 0 && !m_taken) m_fill = CGE_FILL();
        if (length != 0 && tag == kCurrentTag) ReadCurrent(size, kind, length);
        if (length != 0 && tag == kLegacyTag) ReadLegacy(KnownFillKind(kind), length);
        m_taken = true;
    }

    void ReadCurrent(std::uint32_t size, std::uint32_t stored, std::uint32_t length) {
        if (m_taken) {
            CGE_FILL dropped;
            if (LoadCurrent(dropped, size, stored, length))
                SkipExternalData(m_stream, dropped.GetType(), NamesExternalData(dropped));
        } else if (LoadCurrent(m_fill, size, stored, length)) {
            ReadExternalData(m_stream, m_fill);
        }
    }

    /// False when there is no such fill; what follows the body is passed then.
    bool LoadCurrent(CGE_FILL& fill, std::uint32_t size, std::uint32_t stored, std::uint32_t length) {
        const CgeFillType kind = KnownFillKind(stored);
        const bool whole = LoadBody(fill, ReadBytes(m_stream, length), m_remapper);
        if (whole && fill.GetType() == kind) return true;
        if (!whole || kind == stored) m_stream.SetGood(false);
        fill = CGE_FILL();
        SkipExternalData(m_stream, kind, size > std::uint64_t{kSectionHead} + length + 4);
        return false;
    }

    void ReadLegacy(CgeFillType kind, std::uint32_t length) {
        if (m_taken && !SaysWhatFollows(kind)) {
            SkipBytes(m_stream, length);
            return SkipExternalData(m_stream, kind, false);
        }
        CGE_FILL_1250 legacy;
        legacy.bytes = ReadBytes(m_stream, length);
        legacy.SetType(kind);
        legacy.lines = ReadLines(m_stream, FOMIO12Conv::GetNumHatchLines(legacy), m_remapper);
        if (!m_taken) {
            m_fill = FromLegacy(m_stream, legacy, m_remapper);
        } else {
            const std::size_t nameAt = kind == FillVector ? kTmpFileAt : kBitmapAt;
            SkipExternalData(m_stream, kind, WordAt(legacy.bytes, nameAt) != 0);
            if (kind == FillHatch) FindArrows(m_fill, legacy.lines);
        }
    }

    AbstractFileStream& m_stream;
    CGE_FILL& m_fill;
    udi::PtrRemapper& m_remapper;
    bool m_taken = false;  // a section was read: later ones are only read past
};

}  // namespace

void ReadFillRecord(AbstractFileStream& stream, CGE_FILL& fill, udi::PtrRemapper& remapper) {
    FillReader(stream, fill, remapper).Read();
}

CGE_FILL ReadFill1200(AbstractFileStream& stream, unsigned& userData, udi::PtrRemapper& remapper) {
    const auto [stored, length] = ReadWords(stream);
    userData = ReadWord(stream);
    CGE_FILL_1200 legacy;
    legacy.bytes = ReadBytes(stream, length);
    const CgeFillType kind = KnownFillKind(stored);
    legacy.SetType(kind <= CGE_FILL_1200::kLastKind ? kind : FillNone);
    return FromLegacy(stream, legacy, remapper);
}

}  // namespace VyrFOM

void FOMFillSerialization::ReadFrom(AbstractFileStream& stream, CGE_FILL*& record,
                                    udi::PtrRemapper& remapper) {
    if (!record) record = new CGE_FILL;
    try {
        VyrFOM::ReadFillRecord(stream, *record, remapper);
    } catch (...) {
        *record = CGE_FILL();
        throw;
    }
}
