#include "fom/fill_sections.h"

#include "host/base/little_endian.h"

namespace command {
namespace {

/// Tag and size, also kind and length.
constexpr std::size_t kPair = 8;
// In legacy records, of kinds 9, 10 and 11.
constexpr std::size_t kNumberIn1200 = 44, kNumberIn1250 = 48;

class Walker {
public:
    explicit Walker(std::span<const std::uint8_t> record) : m_record(record) {}

    bool Word(std::uint32_t& word) noexcept {
        if (Remaining() < sizeof word) return false;
        word = host::LoadLittle<std::uint32_t>(m_record.data() + m_at);
        m_at += sizeof word;
        return true;
    }
    bool Words(std::uint32_t& first, std::uint32_t& second) noexcept { return Word(first) && Word(second); }
    bool Skip(std::size_t size) noexcept {
        if (size > Remaining()) return false;
        m_at += size;
        return true;
    }
    std::uint32_t WordAt(std::size_t at) const noexcept {
        return m_record.size() < at + 4 ? 0 : host::LoadLittle<std::uint32_t>(m_record.data() + at);
    }
    std::size_t Remaining() const noexcept { return m_record.size() - m_at; }
    std::size_t At() const noexcept { return m_at; }

private:
    std::span<const std::uint8_t> m_record;
    std::size_t m_at = 0;
};

/// Whether the section's size counts the length word of data that is not there. A record of the library goes
/// on at once then: with the next section, or its end.
bool CountsTooMuch(const Walker& walker, const FillSection& section) noexcept {
    const bool canHaveNone =
        section.kind == FillMonoBitmap || section.kind == FillMonoBitmapAlt || section.kind == FillVector;
    if (!canHaveNone || section.size != kPair + std::uint64_t{section.length} + 4) return false;
    const std::uint32_t next = walker.WordAt(walker.At());
    return next == kLegacySection || (next == kEndOfFill && walker.Remaining() == kPair);
}

bool ReadSection(Walker& walker, FillSection& section) noexcept {
    const std::size_t payload = walker.At();
    const bool isKnown = section.tag == kCurrentSection || section.tag == kLegacySection;
    section.bytes = section.size;
    section.body = payload;
    if (!isKnown) return walker.Skip(section.size);
    if (!walker.Words(section.kind, section.length)) return false;
    section.body = walker.At();
    if (!walker.Skip(section.length)) return false;
    if (CountsTooMuch(walker, section)) section.bytes -= 4;
    const std::size_t done = walker.At() - payload;
    if (section.bytes < done) return false;
    section.after = section.bytes - done;
    return walker.Skip(section.after);
}

bool Read1200(Walker& walker, FillSection& section) noexcept {
    std::uint32_t userData = 0;
    section.bytes = walker.Remaining();
    if (!walker.Words(section.kind, section.length) || !walker.Word(userData)) return false;
    section.body = walker.At();
    if (!walker.Skip(section.length)) return false;
    section.after = walker.Remaining();
    return true;
}

}  // namespace

std::optional<std::vector<FillSection>> ReadFillSections(std::span<const std::uint8_t> record,
                                                         DocumentVersion version) {
    Walker walker(record);
    std::vector<FillSection> sections;
    if (version == DocumentVersion::V1200) {
        sections.emplace_back();
        if (!Read1200(walker, sections.back())) return std::nullopt;
        return sections;
    }
    std::uint32_t userData = 0;
    bool isWhole = walker.Word(userData);
    while (isWhole) {
        FillSection section;
        section.offset = walker.At();
        isWhole = walker.Words(section.tag, section.size);
        if (!isWhole || section.tag == kEndOfFill) break;
        isWhole = ReadSection(walker, section);
        sections.push_back(section);
    }
    if (!isWhole || walker.Remaining() != 0) return std::nullopt;
    return sections;
}

void HideTemporaryNumbers(std::span<std::uint8_t> record, DocumentVersion version) {
    const bool is1200 = version == DocumentVersion::V1200;
    const std::size_t number = is1200 ? kNumberIn1200 : kNumberIn1250;
    for (const FillSection& section :
         ReadFillSections(record, version).value_or(std::vector<FillSection>())) {
        const bool isLegacy = is1200 || section.tag == kLegacySection;
        if (!isLegacy || !HasTemporaryData(section.kind) || section.length < number + 4) continue;
        std::uint8_t* const at = record.data() + section.body + number;
        if (host::LoadLittle<std::uint32_t>(at) != 0) host::StoreLittle(at, std::uint32_t{1});
    }
}

}  // namespace command
