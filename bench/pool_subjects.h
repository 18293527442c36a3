#pragma once

#include <algorithm>
#include <boost/flyweight.hpp>
#include <boost/flyweight/hashed_factory.hpp>
#include <boost/flyweight/no_locking.hpp>
#include <boost/flyweight/refcounted.hpp>
#include <cstdint>
#include <memory>
#include <numeric>
#include <random>
#include <set>
#include <time.h>
#include <vector>

#include "fom/fill_list.h"

#include "fill/fill_compare.h"
#include "fill/fill_hash.h"
#include "pool/intern_pool.h"

/// The same distinct uniform fills in our pool and in the rivals' containers.
namespace bench {

/// Time of this thread on the processor, for phases that are timed by hand.
inline double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Makes `fill`, a uniform one, the fill number `number`.
inline void Number(CGE_FILL& fill, std::uint32_t number) {
    fill.SetType(FillUniform);
    CLR_COLORSPEC& color = fill.EditUniform().color;
    color.MakeRGB48(static_cast<int>(number & 0x3FF), static_cast<int>((number >> 10) & 0x3FF),
                    static_cast<int>(number >> 20), 100);
}

inline CGE_FILL Numbered(std::uint32_t number) {
    CGE_FILL fill;
    Number(fill, number);
    return fill;
}

/// 0 to count - 1, shuffled.
inline std::vector<std::uint32_t> Shuffled(std::size_t count, std::uint32_t seed = 7) {
    std::vector<std::uint32_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0u);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(seed));
    return numbers;
}

/// New entries, made in shuffled order as a document's entries are, and owned by the caller.
inline std::vector<WRefCountFill*> NewEntries(std::size_t count) {
    std::vector<WRefCountFill*> entries;
    for (const std::uint32_t number : Shuffled(count, 11)) {
        const CGE_FILL fill = Numbered(number);
        entries.push_back(new WRefCountFill(&fill));
    }
    return entries;
}

struct FillHash {
    std::size_t operator()(const CGE_FILL& fill) const {
        host::Hasher hasher;
        VyrFOM::HashFillInto(hasher, fill);
        return hasher.Finish();
    }
};
struct FillEqual {
    bool operator()(const CGE_FILL& a, const CGE_FILL& b) const {
        return VyrFOM::CompareFills(a, b, false) == 0;
    }
};
using Flyweight = boost::flyweight<CGE_FILL, boost::flyweights::hashed_factory<FillHash, FillEqual>,
                                   boost::flyweights::no_locking, boost::flyweights::refcounted>;

struct EntryLess {
    bool operator()(const WRefCountFill* a, const WRefCountFill* b) const { return a->Compare(b, false) < 0; }
};
using EntrySet = std::set<WRefCountFill*, EntryLess>;

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

/// A fill for the generic pool whose deletion destroys the record and keeps the memory.
struct LeanEntry : VyrFOM::InternNode {
    explicit LeanEntry(const CGE_FILL& fill) : record(fill) {}
    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* block) { LeanMemory::s_blocks.push_back(block); }
    long AddReference(std::int32_t n) noexcept { return AddToCount(n); }
    CGE_FILL record;
};

struct LeanLess {
    bool operator()(const LeanEntry* a, const LeanEntry* b) const {
        return VyrFOM::CompareFills(a->record, b->record, false) < 0;
    }
};

/// A pool with the fills 0 to count - 1, each held once.
struct FilledPool {
    explicit FilledPool(std::size_t count) : list(std::make_shared<WRCFillList>()) {
        for (WRefCountFill* entry : NewEntries(count))
            held.push_back(list->AddOrGetDuplicate(entry, nullptr));
    }

    std::shared_ptr<WRCFillList> list;
    std::vector<const WRefCountFill*> held;  // the pool deletes them
};

struct FilledSet {
    explicit FilledSet(std::size_t count) {
        for (WRefCountFill* entry : NewEntries(count))
            Hold(entry);
    }
    void Hold(WRefCountFill* entry) {
        places.push_back(set.insert(entry).first);
        entry->AddReference(1);
    }
    ~FilledSet() {
        for (WRefCountFill* entry : set)
            delete entry;
    }

    EntrySet set;
    std::vector<EntrySet::iterator> places;
};

/// One filled container per size, kept over all repetitions.
template <class Filled>
Filled& Kept(std::size_t count) {
    static std::vector<std::pair<std::size_t, std::unique_ptr<Filled>>> all;
    for (auto& [size, filled] : all)
        if (size == count) return *filled;
    all.emplace_back(count, std::make_unique<Filled>(count));
    return *all.back().second;
}

}  // namespace bench

template <>
struct VyrFOM::InternTraits<bench::LeanEntry> {
    static void Prepare(bench::LeanEntry&) {}
    static std::uint64_t Hash(const bench::LeanEntry& entry) { return bench::FillHash()(entry.record); }
    static bool AreEqual(const bench::LeanEntry& a, const bench::LeanEntry& b) { return Compare(a, b) == 0; }
    static int Compare(const bench::LeanEntry& a, const bench::LeanEntry& b) {
        return VyrFOM::CompareFills(a.record, b.record, false);
    }
    static void GiveGuid(bench::LeanEntry&) {}
};
