#include "fom/record_facts.h"

#include <cstdio>
#include <string>

#include "host/base/wstring.h"
#include "host/stream/body_fields.h"

#include "fom/grouped.h"
#include "fom/import_report.h"
#include "fom/stored_entry.h"
#include "fom/swatch_label.h"

namespace command {
namespace {

std::string HexOf(std::span<const std::uint8_t> bytes) {
    std::string text;
    char digits[4];
    for (const std::uint8_t byte : bytes) {
        std::snprintf(digits, sizeof digits, "%02x", byte);
        text += digits;
    }
    return text;
}

std::string GuidText(const VyrUtils::Guid& guid) {
    return host::ToUtf8(guid.ToString().view());
}

void AddHead(const char* what, const StoredEntry& stored, bool isWhole, Facts& facts) {
    facts.Add(what, stored.number);
    facts.Add("offset", stored.offset);
    facts.Add("bytes", stored.record.size());
    if (!isWhole) facts.AddFlag("whole", false);
}

void AddLabel(const SwatchLabel& label, Facts& facts) {
    facts.Add("label", label.name);
    if (!label.detail.empty()) facts.Add("detail", label.detail);
}

const char* SectionName(const FillSection& section, DocumentVersion version) noexcept {
    if (version == DocumentVersion::V1200) return "12.0";
    return section.tag == kCurrentSection ? "current" : section.tag == kLegacySection ? "12.5" : "unknown";
}

void AddSection(const StoredEntry& stored, const FillSection& section, DocumentVersion version,
                Facts& facts) {
    const bool isOff = section.tag != 0 && section.size != section.bytes;
    Facts& row = facts.AddRow("sections");
    row.Add("section", SectionName(section, version));
    row.Add("tag", section.tag);
    row.Add("offset", stored.offset + section.offset);
    row.Add("size", section.size,
            isOff ? Grouped(section.size) + " (" + Grouped(section.size - section.bytes) + " too many)" : "");
    row.Add("bytes", section.bytes);
    row.Add("kind", section.kind, std::to_string(section.kind));
    row.Add("length", section.length);
    row.Add("after", section.after);
}

void AddFields(const std::vector<host::BodyField>& fields, std::uint64_t base, Facts& facts) {
    constexpr std::size_t kShown = 24;
    for (const host::BodyField& field : fields) {
        Facts& row = facts.AddRow("fields");
        row.Add("field", field.name);
        row.Add("offset", base + field.offset);
        row.Add("bytes", field.value.size());
        row.Add("value", HexOf(field.value.first(std::min(kShown, field.value.size()))) +
                             (field.value.size() > kShown ? "\u2026" : ""));
    }
}

}  // namespace

void AddFillFacts(const StoredEntry& stored, DocumentVersion version, Facts& facts) {
    bool isWhole = false;
    const auto entry = ReadRecord<WRefCountFill>(stored.record, version, isWhole);
    const auto sections = ReadFillSections(stored.record, version);
    AddHead("fill", stored, isWhole && sections, facts);
    facts.Add("kind", FillKindName(entry->GetFillType()));
    AddLabel(LabelOf(*entry->GetCGEFill()), facts);
    facts.Add("userData", entry->GetUserData());
    facts.Add("guid", GuidText(entry->GetGuid()));
    if (!sections) return;
    for (const FillSection& section : *sections)
        AddSection(stored, section, version, facts);
    for (const FillSection& section : *sections)
        if (section.tag == kCurrentSection)
            AddFields(host::ReadFillFields(stored.record.subspan(section.body, section.length)),
                      stored.offset + section.body, facts);
}

void AddOutlineFacts(const StoredEntry& stored, DocumentVersion version, Facts& facts) {
    bool isWhole = false;
    const auto entry = ReadRecord<WRefCountOutline>(stored.record, version, isWhole);
    const CGE_OUTLINE& record = *entry->GetCGEOutline();
    AddHead("outline", stored, isWhole, facts);
    facts.Add("kind", PenKindName(static_cast<CgeOutlineType>(record.type & 15)));
    AddLabel(LabelOf(record, 1), facts);
    facts.Add("guid", GuidText(entry->GetGuid()));
    facts.Add("startArrowhead", record.leftArrow ? MEMMANGetSize(record.leftArrow) : 0);
    facts.Add("endArrowhead", record.rightArrow ? MEMMANGetSize(record.rightArrow) : 0);
    constexpr std::size_t kLength = 4;
    if (version == DocumentVersion::V1200 || stored.record.size() < kLength) return;
    const std::size_t length = host::LoadLittle<std::uint32_t>(stored.record.data());
    facts.Add("bodyLength", length);
    if (length <= stored.record.size() - kLength)
        AddFields(host::ReadOutlineFields(stored.record.subspan(kLength, length)), stored.offset + kLength,
                  facts);
}

void AddDrawingFacts(const StoredDrawing& stored, Facts& facts) {
    facts.Add("drawing", stored.number);
    facts.Add("name", stored.drawing.name);
    facts.Add("offset", stored.offset);
    facts.Add("bytes", stored.bytes);
    facts.Add("fileBytes", stored.drawing.bytes);
    facts.Add("fileDigest", HexOf(stored.drawing.digest));
    facts.Add("firstShape", stored.firstShape);
    facts.Add("shapes", stored.drawing.shapes);
    Facts& omissions = facts.AddGroup("notCarriedOver");
    for (const auto& [name, times] : stored.drawing.omissions.Counts())
        omissions.Add(name, times);
}

void AddHexFacts(std::span<const std::uint8_t> bytes, std::uint64_t offset, Facts& facts) {
    constexpr std::size_t kLine = 16;
    for (std::size_t at = 0; at < bytes.size(); at += kLine) {
        Facts& row = facts.AddRow("hex");
        row.Add("at", offset + at);
        std::string text;
        for (const std::uint8_t byte : bytes.subspan(at, std::min(kLine, bytes.size() - at)))
            text.append(text.empty() ? "" : " ").append(HexOf({&byte, 1}));
        row.Add("data", text);
    }
}

}  // namespace command
