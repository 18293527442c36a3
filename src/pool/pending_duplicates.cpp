#include "pool/pending_duplicates.h"

#include <algorithm>
#include <utility>

namespace VyrFOM {

void PendingDuplicatesBase::Park(InternNode& entry, const AbstractFileStream& stream) {
    const std::lock_guard guard(m_mutex);
    Entries lone;
    lone.insert(&entry);
    const auto [row, isNew] = m_streams.try_emplace(&stream, std::move(lone));
    if (!isNew) row->second.merge(lone);
    entry.m_parked = true;
}

void PendingDuplicatesBase::Unpark(InternNode& entry) noexcept {
    const std::lock_guard guard(m_mutex);
    for (auto row = m_streams.begin(); row != m_streams.end();) {
        row->second.erase(&entry);
        row = row->second.empty() ? m_streams.erase(row) : std::next(row);
    }
    entry.m_parked = false;
}

PendingDuplicatesBase::Entries PendingDuplicatesBase::Take(const AbstractFileStream& stream) noexcept {
    const std::lock_guard guard(m_mutex);
    const auto row = m_streams.find(&stream);
    if (row == m_streams.end()) return {};
    Entries entries = std::move(row->second);
    m_streams.erase(row);
    std::erase_if(entries, [this](InternNode* entry) { return WaitsElsewhere(entry); });
    for (InternNode* entry : entries)
        entry->m_parked = false;
    return entries;
}

bool PendingDuplicatesBase::WaitsElsewhere(InternNode* entry) const noexcept {
    return std::any_of(m_streams.begin(), m_streams.end(),
                       [entry](const auto& row) { return row.second.contains(entry); });
}

}  // namespace VyrFOM
