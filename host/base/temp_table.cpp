#include "base/temp_table.h"

namespace host::detail {

BlobRef TempFile::Snapshot() const {
    std::lock_guard lock(m_lock);
    return m_blob;
}

std::size_t TempFile::Write(std::uint64_t position, std::span<const std::byte> from) {
    std::lock_guard lock(m_lock);
    if (!m_blob->IsSole()) {
        BlobRef own = m_blob->Clone();
        if (!own) return 0;
        m_blob = std::move(own);
    }
    return m_blob->Write(position, from);
}

unsigned TempTable::Add(TempEntry&& entry) {
    for (;;) {
        const unsigned id = m_lastId.fetch_add(1, std::memory_order_relaxed) + 1;
        if (id == 0) continue;
        Shard& shard = m_shards[id % kShards];
        std::lock_guard lock(shard.lock);
        if (!shard.entries.try_emplace(id, std::move(entry)).second) continue;
        m_count.fetch_add(1, std::memory_order_relaxed);
        return id;
    }
}

std::optional<TempEntry> TempTable::Find(unsigned id) const noexcept {
    const Shard& shard = m_shards[id % kShards];
    std::lock_guard lock(shard.lock);
    const auto found = shard.entries.find(id);
    if (found == shard.entries.end()) return std::nullopt;
    return found->second;
}

// The entry goes after the lock: its content may be large.
bool TempTable::Remove(unsigned id) noexcept {
    Shard& shard = m_shards[id % kShards];
    decltype(shard.entries)::node_type removed;
    {
        std::lock_guard lock(shard.lock);
        removed = shard.entries.extract(id);
    }
    if (!removed) return false;
    m_count.fetch_sub(1, std::memory_order_relaxed);
    return true;
}

}  // namespace host::detail
