#pragma once

#include <cstdio>
#include <initializer_list>
#include <malloc.h>
#include <string>
#include <time.h>
#include <tuple>

#include "pool_containers.h"
#include "ratio.h"

/// A pool against boost::flyweight (hashed, without locking) and std::set of pointers with the pool's own
/// comparison. Ours always pays for its lock and for GUIDs.
namespace bench {

inline std::size_t Size(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Time of this thread on the processor, for phases that are timed by hand.
inline double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Makes `record` the container's records in shuffled order, round and round, and calls `hit`.
template <class Subject, class Hit>
void RunHits(benchmark::State& state, typename Subject::Record& record, Hit hit) {
    const std::vector<std::uint32_t> numbers =
        Shuffled(Size(state), 3 + static_cast<std::uint32_t>(state.thread_index()));
    std::size_t next = 0;
    for (auto _ : state) {
        Subject::Number(record, numbers[next]);
        if (++next == numbers.size()) next = 0;
        hit();
    }
}

template <class Subject>
void HitPool(benchmark::State& state) {
    auto& list = *Kept<FilledPool<Subject>>(Size(state)).list;
    typename Subject::Record record;
    RunHits<Subject>(state, record, [&] { list.RemoveInstance(list.AddOrGetCopy(record)); });
}

// All flyweights of a type share one factory: only one size may be alive.
template <class Subject>
void HitFlyweight(benchmark::State& state) {
    static std::unique_ptr<FilledFlyweights<Subject>> filled;
    if (!filled || filled->held.size() != Size(state)) {
        filled.reset();
        filled = std::make_unique<FilledFlyweights<Subject>>(Size(state));
    }
    typename Subject::Record record;
    RunHits<Subject>(state, record, [&] { benchmark::DoNotOptimize(Flyweight<Subject>(record)); });
}

template <class Subject>
void HitSet(benchmark::State& state) {
    EntrySet<Subject>& set = Kept<FilledSet<Subject>>(Size(state)).set;
    typename Subject::Entry probe(false);
    RunHits<Subject>(state, Subject::RecordOf(probe), [&] {
        typename Subject::Entry* found = *set.find(&probe);
        found->AddReference(1);
        found->RemoveReference(1);
    });
}

/// Every iteration makes a container of `Size` entries from nothing; making and deleting the entries is not
/// timed.
template <class Subject>
void InsertPool(benchmark::State& state) {
    for (auto _ : state) {
        const auto entries = NewEntries<Subject>(Size(state));
        const auto list = std::make_shared<typename Subject::List>();
        const double start = ThreadSeconds();
        for (typename Subject::Entry* entry : entries)
            list->AddOrGetDuplicate(entry, nullptr);
        state.SetIterationTime(ThreadSeconds() - start);
    }
}

template <class Subject>
void InsertSet(benchmark::State& state) {
    for (auto _ : state) {
        const auto entries = NewEntries<Subject>(Size(state));
        EntrySet<Subject> set;
        const double start = ThreadSeconds();
        for (typename Subject::Entry* entry : entries) {
            set.insert(entry);
            entry->AddReference(1);
        }
        state.SetIterationTime(ThreadSeconds() - start);
        for (typename Subject::Entry* entry : entries)
            delete entry;
    }
}

/// The entries of a removal, in the generic pool and in a set, in shuffled order of giving them up.
template <class Subject>
std::vector<const LeanEntry<Subject>*> LeanEntries(std::size_t count) {
    std::vector<const LeanEntry<Subject>*> entries;
    for (const std::uint32_t number : Shuffled(count, 11))
        entries.push_back(new LeanEntry<Subject>(Numbered<Subject>(number)));
    std::shuffle(entries.begin(), entries.end(), std::mt19937(7));
    return entries;
}

template <class Subject, bool kBatch>
void RemovePool(benchmark::State& state) {
    using Entry = LeanEntry<Subject>;
    for (auto _ : state) {
        const LeanMemory memory(Size(state));
        const std::vector<const Entry*> entries = LeanEntries<Subject>(Size(state));
        const ThreadLock lock;
        VyrFOM::InternPool<Entry> pool(lock, nullptr);
        for (const Entry* entry : entries)
            pool.AddOrGetDuplicate(const_cast<Entry*>(entry), nullptr);
        pool.Enumerate([](const Entry*) { return false; });  // sorts, as a save would have
        const double start = ThreadSeconds();
        if constexpr (kBatch) {
            pool.RemoveInstances(entries);
        } else {
            for (const Entry* entry : entries)
                pool.RemoveInstance(entry);
        }
        state.SetIterationTime(ThreadSeconds() - start);
    }
}

/// Whoever gives up an entry lowers its count first, and the last one deletes it. No lock.
template <class Subject>
void RemoveSet(benchmark::State& state) {
    using Entry = LeanEntry<Subject>;
    for (auto _ : state) {
        const LeanMemory memory(Size(state));
        std::set<const Entry*, LeanLess<Subject>> set;
        std::vector<typename decltype(set)::iterator> places;
        for (const Entry* entry : LeanEntries<Subject>(Size(state))) {
            places.push_back(set.insert(entry).first);
            const_cast<Entry*>(entry)->AddReference(1);
        }
        const double start = ThreadSeconds();
        for (const auto& place : places) {
            const Entry* entry = *place;
            if (const_cast<Entry*>(entry)->AddReference(-1) > 0) continue;
            set.erase(place);
            delete entry;
        }
        state.SetIterationTime(ThreadSeconds() - start);
    }
}

/// A new colour for a random record among `Size` others, over and over.
template <class Subject, class SetColor>
void RunEdits(benchmark::State& state, SetColor setColor) {
    const std::vector<std::uint32_t> order = Shuffled(Size(state));
    typename Subject::Record record;
    static std::uint32_t edits = 0;
    std::size_t next = 0;
    for (auto _ : state) {
        // Never a colour that is there, and in no order.
        Subject::Number(record, 1u << 31 | (++edits * 0x1E3779B1u & 0x3FFFFFFFu));
        setColor(order[next], Subject::Color(record));
        if (++next == order.size()) next = 0;
    }
}

template <class Subject>
void EditHandle(benchmark::State& state) {
    auto& held = Kept<FilledHandles<Subject>>(Size(state)).held;
    RunEdits<Subject>(
        state, [&](std::uint32_t at, const CLR_COLORSPEC& color) { Subject::SetColor(held[at], color); });
}

template <class Subject>
struct EditedSet : FilledSet<Subject> {
    using FilledSet<Subject>::FilledSet;
};

/// A handle knows its entry and not the entry's place in a tree: the rival looks for it. It takes no lock.
template <class Subject>
void EditSet(benchmark::State& state) {
    auto& filled = Kept<EditedSet<Subject>>(Size(state));
    RunEdits<Subject>(state, [&](std::uint32_t at, const CLR_COLORSPEC& color) {
        auto node = filled.set.extract(filled.set.find(filled.entries[at]));
        Subject::Color(Subject::RecordOf(*node.value())) = color;
        filled.set.insert(std::move(node));
    });
}

template <class Subject>
void RegisterPool() {
    using Run = void (*)(benchmark::State&);
    const auto add = [](const char* name, Run run, std::initializer_list<long> sizes) {
        auto* added = benchmark::RegisterBenchmark(name, run);
        for (const long size : sizes)
            added->Arg(size);
        return added;
    };
    add("HitPool", HitPool<Subject>, {100, 10000, 1000000});
    add("HitFlyweight", HitFlyweight<Subject>, {100, 10000, 1000000});
    add("HitSet", HitSet<Subject>, {100, 10000, 1000000});
    add("InsertPool", InsertPool<Subject>, {10000, 1000000})->UseManualTime();
    add("InsertSet", InsertSet<Subject>, {10000, 1000000})->UseManualTime();
    add("RemovePool", RemovePool<Subject, false>, {1000, 30000, 1000000})->UseManualTime();
    add("RemovePoolMany", RemovePool<Subject, true>, {1000, 30000, 1000000})->UseManualTime();
    add("RemoveSet", RemoveSet<Subject>, {1000, 30000, 1000000})->UseManualTime();
    add("EditHandle", EditHandle<Subject>, {10000, 1000000});
    add("EditSet", EditSet<Subject>, {10000, 1000000});
    add("TwoThreads", HitPool<Subject>, {10000})->Threads(1)->Threads(2)->UseRealTime();
}

inline std::vector<Row> PoolRows() {
    using std::string;
    std::vector<Row> rows;
    for (const string n : {"100", "10000", "1000000"})
        rows.push_back({"hit, " + n + ", flyweight", "HitPool/" + n, "HitFlyweight/" + n, 1.0});
    rows.push_back({"hit, 10000, set", "HitPool/10000", "HitSet/10000", 0.4});
    rows.push_back({"hit, 1000000, set", "HitPool/1000000", "HitSet/1000000", 0.28});
    for (const auto& [n, count, reach] : {std::tuple("10000", 1e4, 0.3), std::tuple("1000000", 1e6, 0.12)})
        rows.push_back({string("miss and insert, ") + n + ", set", string("InsertPool/") + n + "/manual_time",
                        string("InsertSet/") + n + "/manual_time", reach, Row::Cost, count});
    for (const auto& [n, count] :
         {std::pair("1000", 1e3), std::pair("30000", 3e4), std::pair("1000000", 1e6)})
        for (const auto& [how, ours] :
             {std::pair("many at once", "RemovePoolMany/"), std::pair("one by one", "RemovePool/")})
            rows.push_back({string("removal ") + how + ", " + n + ", set", string(ours) + n + "/manual_time",
                            string("RemoveSet/") + n + "/manual_time", 0.5, Row::Cost, count});
    for (const string n : {"10000", "1000000"})
        rows.push_back({"edit through a handle, " + n + ", set", "EditHandle/" + n, "EditSet/" + n, 0.3});
    rows.push_back({"two threads hitting, to one", "TwoThreads/10000/real_time/threads:2",
                    "TwoThreads/10000/real_time/threads:1", 1.0, Row::Throughput});
    return rows;
}

/// Heap of a distinct pooled record, all included, as the allocator accounts for it.
template <class Subject>
void PrintHeap() {
    for (const std::size_t count : {std::size_t{10000}, std::size_t{13000}}) {
        const std::vector<std::uint32_t> numbers = Shuffled(count);
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const auto list = std::make_shared<typename Subject::List>();
        for (const std::uint32_t number : numbers)
            list->AddOrGetCopy(Numbered<Subject>(number));
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        std::printf("heap per distinct %s, %zu pooled: %.1f bytes, reach 512\n", Subject::kName, count,
                    static_cast<double>(after - before) / static_cast<double>(count));
    }
}

/// The whole program.
template <class Subject>
int RunPool(int argc, char** argv) {
    RegisterPool<Subject>();
    const int result = RunAndCompare(argc, argv, PoolRows());
    PrintHeap<Subject>();
    return result;
}

}  // namespace bench
