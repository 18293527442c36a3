#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <utility>

#include "host/stream/file_stream.h"

#include "pool/intern_pool_base.h"
#include "pool/pending_duplicates.h"

namespace VyrFOM {

/// What a pool asks of its entries, by a specialisation:
/// - `void Prepare(Entry&)` does all that can be done before the pool is looked at;
/// - `std::uint64_t Hash(const Entry&)`;
/// - `bool AreEqual(const Entry&, const Entry&)`: equal entries have equal hashes;
/// - `int Compare(const Entry&, const Entry&)`: the order, 0 for equal entries;
/// - `void GiveGuid(Entry&)` gives a record that has none a GUID.
template <class Entry>
struct InternTraits;

/// A pool in which equal entries are stored once; it owns its entries. Safe for concurrent use.
template <class Entry>
class InternPool final : public InternPoolBase {
    using Traits = InternTraits<Entry>;
    using Pending = PendingDuplicates<Entry>;

public:
    /// The lock protects the pool and outlives it. `owner` comes back from GetOwner.
    InternPool(const ThreadLock& lock, void* owner) noexcept : InternPoolBase(lock, &CompareNodes, owner) {}
    /// Deletes the entries, whatever their counts.
    ~InternPool() {
        ForEach([](InternNode& node) { delete static_cast<Entry*>(&node); });
    }

    const Entry* AddOrGetDuplicate(Entry* entry, AbstractFileStream* stream) {
        if (!entry) return nullptr;
        if (PoolOf(*entry)) return HoldAgain(*entry);
        Traits::Prepare(*entry);
        const std::uint64_t hash = Traits::Hash(*entry);
        const auto isEqual = EqualTo(*entry);
        InternNode* pooled = ExpectsMiss(*entry) ? nullptr : FindAndHold(hash, isEqual);
        if (!pooled) {
            Traits::GiveGuid(*entry);
            pooled = InsertOrHold(*entry, hash, isEqual, [entry] { Pending::Instance().Unpark(*entry); });
        }
        if (pooled != entry) DisposeOf(*entry, stream, *static_cast<Entry*>(pooled));
        return static_cast<const Entry*>(pooled);
    }

    /// For a value that is not an entry yet: the pooled entry that `isEqual(const Entry&)` accepts, with one
    /// more reference; null when there is none.
    template <class IsEqual>
    const Entry* Find(std::uint64_t hash, IsEqual&& isEqual) const {
        return static_cast<const Entry*>(FindAndHold(
            hash, [&isEqual](const InternNode& node) { return isEqual(static_cast<const Entry&>(node)); }));
    }

    bool RemoveInstance(const Entry* entry) {
        if (!entry) return false;
        const Drop drop = DropReference(Mutable(*entry));
        if (drop == Drop::Removed) delete entry;  // outside the lock
        return drop != Drop::NotHere;
    }

    /// RemoveInstance of each, with one lock for many; how many it would have answered true for.
    std::size_t RemoveInstances(std::span<const Entry* const> entries) {
        std::size_t given = 0;
        for (std::size_t from = 0; from < entries.size(); from += kBatch)
            given += RemoveBatch(entries.subspan(from, std::min(kBatch, entries.size() - from)));
        return given;
    }

    Entry* ExtractInstanceForEditing(const Entry* entry) {
        if (!entry) return nullptr;
        Entry& node = Mutable(*entry);
        std::unique_ptr<Entry> copy;
        for (std::int32_t count = CountOf(node);;) {
            if (count != 1) {
                // Copied while the reference is still the caller's: without it the entry may go at any time.
                // When the others let go meanwhile, the caller has become the only holder, and the copy is
                // not needed.
                if (!copy) copy = std::make_unique<Entry>(*entry);
                if (TryDrop(node, count)) return copy.release();
                continue;
            }
            const Drop drop = DropLast(node);
            if (drop == Drop::Removed) return &node;
            if (drop == Drop::NotHere) return nullptr;
            count = CountOf(node);
        }
    }

    /// ExtractInstanceForEditing, `change(Entry&)` and AddOrGetDuplicate in one step, for an entry that the
    /// caller alone holds. Null, nothing changed, when that is not so. What `change` throws passes, with
    /// everything as it was if it has left the entry as it was. It runs under the lock: it must be short, and
    /// must not use the pool.
    template <class Change>
    const Entry* EditInstance(const Entry* entry, Change&& change) {
        Entry& node = Mutable(*entry);
        if (PoolOf(node) != this || CountOf(node) != 1) return nullptr;
        const auto rehash = [&] {
            std::forward<Change>(change)(node);
            Traits::GiveGuid(node);
            return Traits::Hash(node);
        };
        InternNode* pooled = Rekey(node, rehash, EqualTo(node));
        if (pooled && pooled != &node) delete &node;
        return static_cast<const Entry*>(pooled);
    }

    /// AddOrGetDuplicate(entry, stream) with the caller's reference on `old`, which is pooled here, given up
    /// in the same step. The entry that is returned is not `old` when the caller was its only holder, even
    /// where both are equal in the pool's order. On failure nothing has changed.
    const Entry* ReplaceInstance(const Entry* old, Entry* entry, AbstractFileStream* stream) {
        Entry& node = Mutable(*old);
        if (PoolOf(*entry) || CountOf(node) != 1) {
            const Entry* pooled = AddOrGetDuplicate(entry, stream);
            RemoveInstance(old);
            return pooled;
        }
        Traits::Prepare(*entry);
        Traits::GiveGuid(*entry);
        const auto settle = [&](const InternNode* found) {
            if (!found && IsParked(*entry)) Pending::Instance().Unpark(*entry);
            if (found && stream) Pending::Instance().Park(*entry, *stream);
        };
        bool isOut = false;
        InternNode* pooled = Exchange(node, *entry, Traits::Hash(*entry), EqualTo(*entry), settle, isOut);
        if (isOut)
            delete &node;
        else
            RemoveInstance(old);
        // With a stream the loser is the table's by now, and may be gone.
        if (pooled != entry && !stream && !IsParked(*entry)) delete entry;
        return static_cast<const Entry*>(pooled);
    }

    /// Takes the caller's entry out of `source` and pools it here, or gives it up where an equal one is
    /// pooled. Null, nothing changed, when others hold it. Throws as AddOrGetDuplicate.
    const Entry* AdoptInstance(InternPool& source, const Entry* entry) {
        Entry& node = Mutable(*entry);
        if (PoolOf(node) != &source || CountOf(node) != 1) return nullptr;
        const std::uint64_t hash = HashOf(node);
        if (InternNode* found = FindAndHold(hash, EqualTo(node))) {
            source.RemoveInstance(entry);
            return static_cast<const Entry*>(found);
        }
        // Once out of the one pool it must go into the other: nothing may fail between.
        Promise();
        if (source.DropLast(node) != Drop::Removed) {
            EndPromise();
            return nullptr;
        }
        InternNode* pooled = InsertPromised(node, hash, EqualTo(node));
        if (pooled != &node) delete &node;
        return static_cast<const Entry*>(pooled);
    }

    /// Calls `visit(const Entry*)` in order until it returns false.
    template <class VisitEntry>
    void Enumerate(VisitEntry&& visit) const {
        using Callable = std::remove_reference_t<VisitEntry>;
        Visit(
            [](void* context, const InternNode& node) -> bool {
                return (*static_cast<Callable*>(context))(static_cast<const Entry*>(&node));
            },
            const_cast<void*>(static_cast<const void*>(std::addressof(visit))));
    }

private:
    std::size_t RemoveBatch(std::span<const Entry* const> entries) {
        std::array<InternNode*, kBatch> nodes;
        std::size_t count = 0;
        for (const Entry* entry : entries)
            if (entry) nodes[count++] = &Mutable(*entry);
        std::array<Drop, kBatch> drops;
        DropBatch(std::span(nodes).first(count), drops.data());
        std::size_t given = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (drops[i] == Drop::Removed) delete static_cast<Entry*>(nodes[i]);  // outside the lock
            given += drops[i] != Drop::NotHere;
        }
        return given;
    }

    // Callers hold pooled entries as const: the content is, the count of holders is not.
    static Entry& Mutable(const Entry& entry) noexcept { return const_cast<Entry&>(entry); }
    static auto EqualTo(const Entry& entry) noexcept {
        return [&entry](const InternNode& node) {
            return Traits::AreEqual(static_cast<const Entry&>(node), entry);
        };
    }
    static int CompareNodes(const InternNode& a, const InternNode& b) {
        return Traits::Compare(static_cast<const Entry&>(a), static_cast<const Entry&>(b));
    }

    /// The caller hands in what is pooled already, and holds: one reference more.
    const Entry* HoldAgain(Entry& entry) {
        if (PoolOf(entry) != this) {
            assert(false && "the entry is in another pool");
            throw std::logic_error("the entry is in another pool");
        }
        entry.AddReference(1);
        return &entry;
    }

    void DisposeOf(Entry& loser, AbstractFileStream* stream, Entry& pooled) {
        if (!stream) {
            if (!IsParked(loser)) delete &loser;  // a parked one is the table's, and may still be pointed at
            return;
        }
        try {
            Traits::GiveGuid(loser);
            Pending::Instance().Park(loser, *stream);
        } catch (...) {
            RemoveInstance(&pooled);
            throw;
        }
    }
};

}  // namespace VyrFOM
