#include "fom/kind_counts.h"

#include "fom/import_report.h"
#include "fom/stored_entry.h"

namespace command {
namespace {

constexpr const char* kUnreadable = "unreadable";

const char* KindOfFill(const StoredEntry& stored, DocumentVersion version) {
    const auto sections = ReadFillSections(stored.record, version);
    if (!sections || sections->empty()) return kUnreadable;
    return FillKindName(static_cast<CgeFillType>(sections->front().kind));
}

const char* KindOfOutline(const StoredEntry& stored, DocumentVersion version) {
    bool isWhole = false;
    const auto entry = ReadRecord<WRefCountOutline>(stored.record, version, isWhole);
    if (!isWhole) return kUnreadable;
    return PenKindName(static_cast<CgeOutlineType>(entry->GetCGEOutline()->type & 15));
}

}  // namespace

void KindCounts::Count(const StoredEntry& stored) {
    stored.isFill ? ++m_fills[KindOfFill(stored, m_version)] : ++m_outlines[KindOfOutline(stored, m_version)];
}

std::uint64_t KindCounts::Total(const Map& kinds) noexcept {
    std::uint64_t total = 0;
    for (const auto& [kind, count] : kinds)
        total += count;
    return total;
}

void KindCounts::Add(const Map& kinds, Facts& facts) {
    facts.Add("total", Total(kinds));
    Facts& byKind = facts.AddGroup("byKind");
    for (const auto& [kind, count] : kinds)
        byKind.Add(kind, count);
}

}  // namespace command
