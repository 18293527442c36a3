#include "fom/document_losses.h"

#include <algorithm>

#include "fom/record_fields.h"
#include "fom/stored_entry.h"

namespace command {
namespace {

constexpr std::size_t kUserData = 4, kPair = 8;

/// What is left of a fill's record for a reader that knows the 12.50 section only: user data, that section,
/// the end.
std::vector<std::uint8_t> LegacyPart(std::span<const std::uint8_t> record) {
    std::vector<std::uint8_t> part(record.begin(), record.begin() + kUserData);
    for (const FillSection& section :
         ReadFillSections(record, DocumentVersion::V1250).value_or(std::vector<FillSection>())) {
        if (section.tag != kLegacySection) continue;
        const auto bytes = record.subspan(section.offset, kPair + section.bytes);
        part.insert(part.end(), bytes.begin(), bytes.end());
    }
    part.resize(part.size() + kPair);
    return part;
}

const CGE_FILL& RecordOf(const WRefCountFill& entry) {
    return *entry.GetCGEFill();
}

const CGE_OUTLINE& RecordOf(const WRefCountOutline& entry) {
    return *entry.GetCGEOutline();
}

template <class Entry>
std::unique_ptr<Entry> ReadAsVersion(const Entry& entry, DocumentVersion version) {
    std::vector<std::uint8_t> record;
    AppendRecord(entry, version, record);
    if constexpr (std::is_same_v<Entry, WRefCountFill>)
        if (version == DocumentVersion::V1250) record = LegacyPart(record);
    bool isWhole = false;
    return ReadRecord<Entry>(record, version, isWhole);
}

template <class Entry, class List>
Losses Find(const List& pool, DocumentVersion version) {
    Losses losses;
    const auto remaining = std::make_shared<List>();
    pool.Enumerate([&](const Entry* entry) {
        auto after = ReadAsVersion(*entry, version);
        for (const std::string& name : CompareRecords(RecordOf(*entry), RecordOf(*after))) {
            ++losses.fields[name].entries;
            losses.fields[name].uses += static_cast<std::size_t>(entry->GetReference());
        }
        remaining->AddOrGetDuplicate(after.get(), nullptr);
        static_cast<void>(after.release());
        return true;
    });
    losses.before = pool.GetCount();
    losses.after = remaining->GetCount();
    return losses;
}

void Add(const Losses& losses, const char* name, Facts& facts) {
    Facts& group = facts.AddGroup(name);
    group.Add("before", losses.before);
    group.Add("after", losses.after);
    group.AddList("lost");
    for (const auto& [field, count] : losses.fields) {
        Facts& row = group.AddRow("lost");
        row.Add("field", field);
        row.Add("records", count.entries);
        row.Add("uses", count.uses);
    }
}

}  // namespace

DocumentLosses FindLosses(const PaintDocument& document, DocumentVersion version) {
    return {Find<WRefCountFill, WRCFillList>(*document.Pool(), version),
            Find<WRefCountOutline, WRCOutlineList>(document.OutlinePool(), version)};
}

void AddLosses(const DocumentLosses& losses, Facts& facts) {
    Add(losses.fills, "fills", facts);
    Add(losses.outlines, "outlines", facts);
}

}  // namespace command
