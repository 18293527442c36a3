#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "base/blob.h"

namespace host::detail {

/// The bytes of one entry. They outlive the entry while a stream writes them, and are shared with duplicates
/// until one of them is written.
///
/// A new reference to the blob comes from a reference that somebody holds. The file's own is only reached
/// under m_lock, so that a sole reference seen under m_lock stays the sole one until m_lock is released:
/// writing in place is safe.
class TempFile : public RefCounted {
public:
    explicit TempFile(BlobRef blob) noexcept : m_blob(std::move(blob)) {}

    /// What the file holds now; later writes do not show in it.
    BlobRef Snapshot() const;
    std::size_t Write(std::uint64_t position, std::span<const std::byte> from);

private:
    mutable std::mutex m_lock;
    BlobRef m_blob;
};
using TempFileRef = RefPtr<TempFile>;

/// One entry: a file, or a pointer that somebody else owns.
struct TempEntry {
    TempFileRef file;
    void* data = nullptr;
    unsigned tag = 0;
};

/// Entries by identifier, in shards with a lock each.
class TempTable {
public:
    /// Identifiers are handed out from the one after `lastId`, round and round.
    explicit TempTable(unsigned lastId = 0) noexcept : m_lastId(lastId) {}

    /// As if all identifiers up to `lastId` had been handed out in this round.
    void RestartAfter(unsigned lastId) noexcept { m_lastId.store(lastId, std::memory_order_relaxed); }

    /// The new entry's identifier. Throws bad_alloc.
    unsigned Add(TempEntry&& entry);
    std::optional<TempEntry> Find(unsigned id) const noexcept;
    bool Remove(unsigned id) noexcept;
    /// Calls `change(entry)` under the lock when there is such an entry.
    template <class Change>
    void Update(unsigned id, Change change) noexcept {
        Shard& shard = m_shards[id % kShards];
        std::lock_guard lock(shard.lock);
        if (const auto found = shard.entries.find(id); found != shard.entries.end()) change(found->second);
    }
    std::size_t Count() const noexcept { return m_count.load(std::memory_order_relaxed); }

private:
    static constexpr std::size_t kShards = 16;
    struct Shard {
        mutable std::mutex lock;
        std::unordered_map<unsigned, TempEntry> entries;
    };

    std::array<Shard, kShards> m_shards;
    std::atomic<unsigned> m_lastId;
    std::atomic<std::size_t> m_count{0};
};

}  // namespace host::detail
