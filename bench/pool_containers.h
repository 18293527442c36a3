#pragma once

#include <algorithm>
#include <boost/flyweight.hpp>
#include <boost/flyweight/hashed_factory.hpp>
#include <boost/flyweight/no_locking.hpp>
#include <boost/flyweight/refcounted.hpp>
#include <cstdint>
#include <memory>
#include <mutex>
#include <numeric>
#include <random>
#include <set>
#include <vector>

#include "host/color/colorspec.h"

#include "pool/intern_pool.h"

/// The same distinct records in our pool and in the rivals' containers. A `Subject` says what is pooled:
/// - the types `Record`, `Entry`, `List` and `Handle`, and the words `kName`;
/// - `void Number(Record&, std::uint32_t)` makes the record the one of that number;
/// - `CLR_COLORSPEC& Color(Record&)`, which the number decides;
/// - `Record& RecordOf(Entry&)`;
/// - `std::uint64_t Hash(const Record&)` and `int Compare(const Record&, const Record&)`, the pool's;
/// - `Told(const std::shared_ptr<List>&)` is the pool as a handle is told it;
/// - `void SetColor(Handle&, const CLR_COLORSPEC&)`.
namespace bench {

/// A colour of its own for every number.
inline void NumberColor(CLR_COLORSPEC& color, std::uint32_t number) {
    color.MakeRGB48(static_cast<int>(number & 0x3FF), static_cast<int>((number >> 10) & 0x3FF),
                    static_cast<int>(number >> 20), 100);
}

template <class Subject>
typename Subject::Record Numbered(std::uint32_t number) {
    typename Subject::Record record;
    Subject::Number(record, number);
    return record;
}

/// 0 to count - 1 in an order that nobody can predict, the same in every run.
inline std::vector<std::uint32_t> Shuffled(std::size_t count, std::uint32_t seed = 7) {
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0u);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
    return numbers;
}

/// New entries, made in shuffled order as a document's entries are, and owned by the caller.
template <class Subject>
std::vector<typename Subject::Entry*> NewEntries(std::size_t count) {
    std::vector<typename Subject::Entry*> entries;
    for (const std::uint32_t number : Shuffled(count, 11)) {
        const typename Subject::Record record = Numbered<Subject>(number);
        entries.push_back(new typename Subject::Entry(&record));
    }
    return entries;
}

template <class Subject>
struct RecordHash {
    std::size_t operator()(const typename Subject::Record& record) const { return Subject::Hash(record); }
};
template <class Subject>
struct RecordEqual {
    using Record = typename Subject::Record;
    bool operator()(const Record& a, const Record& b) const { return Subject::Compare(a, b) == 0; }
};
template <class Subject>
using Flyweight =
    boost::flyweight<typename Subject::Record,
                     boost::flyweights::hashed_factory<RecordHash<Subject>, RecordEqual<Subject>>,
                     boost::flyweights::no_locking, boost::flyweights::refcounted>;

template <class Subject>
struct EntryLess {
    using Entry = typename Subject::Entry;
    bool operator()(const Entry* a, const Entry* b) const { return a->Compare(b, false) < 0; }
};
template <class Subject>
using EntrySet = std::set<typename Subject::Entry*, EntryLess<Subject>>;

/// Memory of deleted LeanEntries, freed when this ends: how long the allocator takes for an entry is not the
/// container's doing.
struct LeanMemory {
    explicit LeanMemory(std::size_t count) { s_blocks.reserve(count); }
    ~LeanMemory() {
        for (void* block : s_blocks)
            ::operator delete(block);
        s_blocks.clear();
    }
    static inline std::vector<void*> s_blocks;
};

/// A record for the generic pool whose deletion destroys the record and keeps the memory.
template <class Subject>
struct LeanEntry : VyrFOM::InternNode {
    explicit LeanEntry(const typename Subject::Record& r) : record(r) {}
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* block) { LeanMemory::s_blocks.push_back(block); }
    long AddReference(std::int32_t n) noexcept { return AddToCount(n); }
    typename Subject::Record record;
};

template <class Subject>
struct LeanLess {
    bool operator()(const LeanEntry<Subject>* a, const LeanEntry<Subject>* b) const {
        return Subject::Compare(a->record, b->record) < 0;
    }
};

/// A pool with the records 0 to count - 1, each held once.
template <class Subject>
struct FilledPool {
    explicit FilledPool(std::size_t count) : list(std::make_shared<typename Subject::List>()) {
        for (typename Subject::Entry* entry : NewEntries<Subject>(count))
            list->AddOrGetDuplicate(entry, nullptr);
    }

    std::shared_ptr<typename Subject::List> list;  // deletes the entries
};

template <class Subject>
struct FilledSet {
    explicit FilledSet(std::size_t count) : entries(NewEntries<Subject>(count)) {
        for (typename Subject::Entry* entry : entries) {
            set.insert(entry);
            entry->AddReference(1);
        }
    }
    ~FilledSet() {
        for (typename Subject::Entry* entry : entries)
            delete entry;
    }

    std::vector<typename Subject::Entry*> entries;
    EntrySet<Subject> set;
};

template <class Subject>
struct FilledFlyweights {
    explicit FilledFlyweights(std::size_t count) {
        for (const std::uint32_t number : Shuffled(count, 11))
            held.emplace_back(Numbered<Subject>(number));
    }
    std::vector<Flyweight<Subject>> held;
};

template <class Subject>
struct FilledHandles {
    explicit FilledHandles(std::size_t count) : list(std::make_shared<typename Subject::List>()) {
        held.reserve(count);
        for (typename Subject::Entry* entry : NewEntries<Subject>(count))
            held.emplace_back(entry, Subject::Told(list));
    }
    std::shared_ptr<typename Subject::List> list;
    std::vector<typename Subject::Handle> held;
};

/// One filled container per size, kept over all repetitions and shared by all threads.
template <class Filled>
Filled& Kept(std::size_t count) {
    static std::mutex mutex;
    const std::lock_guard guard(mutex);
    static std::vector<std::pair<std::size_t, std::unique_ptr<Filled>>> all;
    for (auto& [size, filled] : all)
        if (size == count) return *filled;
    all.emplace_back(count, std::make_unique<Filled>(count));
    return *all.back().second;
}

}  // namespace bench

template <class Subject>
struct VyrFOM::InternTraits<bench::LeanEntry<Subject>> {
    using Entry = bench::LeanEntry<Subject>;
    static void Prepare(Entry&) {}
    static std::uint64_t Hash(const Entry& entry) { return Subject::Hash(entry.record); }
    static bool AreEqual(const Entry& a, const Entry& b) { return Compare(a, b) == 0; }
    static int Compare(const Entry& a, const Entry& b) { return Subject::Compare(a.record, b.record); }
    static void GiveGuid(Entry&) {}
};
