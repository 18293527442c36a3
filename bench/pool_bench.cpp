// The pool of fills against boost::flyweight (hashed, without locking) and std::set of pointers with the
// pool's own comparison, on uniform fills. Ours always pays for its lock and for GUIDs.

#include <cstdio>
#include <malloc.h>
#include <string>

#include "fom/fill_handle.h"

#include "pool_subjects.h"
#include "ratio.h"

namespace {

using bench::FilledPool;
using bench::FilledSet;
using bench::Kept;

std::size_t Size(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Calls `hit` with the fills of the container in shuffled order, round and round.
template <class Hit>
void RunHits(benchmark::State& state, Hit hit) {
    const std::vector<std::uint32_t> numbers =
        bench::Shuffled(Size(state), 3 + static_cast<std::uint32_t>(state.thread_index()));
    CGE_FILL fill;
    std::size_t next = 0;
    for (auto _ : state) {
        bench::Number(fill, numbers[next]);
        if (++next == numbers.size()) next = 0;
        hit(fill);
    }
}

void HitPool(benchmark::State& state) {
    WRCFillList& list = *Kept<FilledPool>(Size(state)).list;
    RunHits(state, [&list](const CGE_FILL& fill) { list.RemoveInstance(list.AddOrGetCopy(fill)); });
}

struct FilledFlyweights {
    explicit FilledFlyweights(std::size_t count) {
        for (const std::uint32_t number : bench::Shuffled(count, 11))
            held.emplace_back(bench::Numbered(number));
    }
    std::vector<bench::Flyweight> held;
};

// All flyweights of a type share one factory: only one size may be alive.
void HitFlyweight(benchmark::State& state) {
    static std::unique_ptr<FilledFlyweights> filled;
    if (!filled || filled->held.size() != Size(state)) {
        filled.reset();
        filled = std::make_unique<FilledFlyweights>(Size(state));
    }
    RunHits(state, [](const CGE_FILL& fill) { benchmark::DoNotOptimize(bench::Flyweight(fill)); });
}

void HitSet(benchmark::State& state) {
    bench::EntrySet& set = Kept<FilledSet>(Size(state)).set;
    WRefCountFill probe(false);
    RunHits(state, [&](const CGE_FILL& fill) {
        probe.GetCGEFill()->EditUniform() = fill.Uniform();
        probe.GetCGEFill()->SetType(FillUniform);
        WRefCountFill* found = *set.find(&probe);
        found->AddReference(1);
        found->RemoveReference(1);
    });
}

/// Every iteration makes a container of `Size` entries from nothing; making and deleting the entries is not
/// timed.
void InsertPool(benchmark::State& state) {
    for (auto _ : state) {
        const std::vector<WRefCountFill*> entries = bench::NewEntries(Size(state));
        const auto list = std::make_shared<WRCFillList>();
        const double start = bench::ThreadSeconds();
        for (WRefCountFill* entry : entries)
            list->AddOrGetDuplicate(entry, nullptr);
        state.SetIterationTime(bench::ThreadSeconds() - start);
    }
}

void InsertSet(benchmark::State& state) {
    for (auto _ : state) {
        const std::vector<WRefCountFill*> entries = bench::NewEntries(Size(state));
        bench::EntrySet set;
        const double start = bench::ThreadSeconds();
        for (WRefCountFill* entry : entries) {
            set.insert(entry);
            entry->AddReference(1);
        }
        state.SetIterationTime(bench::ThreadSeconds() - start);
        for (WRefCountFill* entry : entries)
            delete entry;
    }
}

/// The fills of a removal, in the generic pool and in a set, in shuffled order of giving them up.
struct Removal {
    explicit Removal(std::size_t count) {
        for (const std::uint32_t number : bench::Shuffled(count, 11))
            entries.push_back(new bench::LeanEntry(bench::Numbered(number)));
        std::shuffle(entries.begin(), entries.end(), std::mt19937(7));
    }
    std::vector<const bench::LeanEntry*> entries;
};

template <bool kBatch>
void RemovePool(benchmark::State& state) {
    for (auto _ : state) {
        const bench::LeanMemory memory(Size(state));
        const Removal removal(Size(state));
        const ThreadLock lock;
        VyrFOM::InternPool<bench::LeanEntry> pool(lock, nullptr);
        for (const bench::LeanEntry* entry : removal.entries)
            pool.AddOrGetDuplicate(const_cast<bench::LeanEntry*>(entry), nullptr);
        pool.Enumerate([](const bench::LeanEntry*) { return false; });  // sorts, as a save would have
        const double start = bench::ThreadSeconds();
        if constexpr (kBatch) {
            pool.RemoveInstances(removal.entries);
        } else {
            for (const bench::LeanEntry* entry : removal.entries)
                pool.RemoveInstance(entry);
        }
        state.SetIterationTime(bench::ThreadSeconds() - start);
    }
}

/// Whoever gives up an entry lowers its count first, and the last one deletes it. No lock.
void RemoveSet(benchmark::State& state) {
    for (auto _ : state) {
        const bench::LeanMemory memory(Size(state));
        const Removal removal(Size(state));
        std::set<const bench::LeanEntry*, bench::LeanLess> set;
        std::vector<decltype(set)::iterator> places;
        for (const bench::LeanEntry* entry : removal.entries)
            places.push_back(set.insert(entry).first);
        const double start = bench::ThreadSeconds();
        for (const auto& place : places) {
            const bench::LeanEntry* entry = *place;
            if (const_cast<bench::LeanEntry*>(entry)->AddReference(-1) > 0) continue;
            set.erase(place);
            delete entry;
        }
        state.SetIterationTime(bench::ThreadSeconds() - start);
    }
}

/// A new colour for a random fill among `Size` others, over and over.
template <class SetColor>
void RunEdits(benchmark::State& state, SetColor setColor) {
    const std::vector<std::uint32_t> order = bench::Shuffled(Size(state));
    CGE_FILL fill;
    static std::uint32_t edits = 0;
    std::size_t next = 0;
    for (auto _ : state) {
        // Never a colour that is there, and in no order.
        bench::Number(fill, 1u << 31 | (++edits * 0x1E3779B1u & 0x3FFFFFFFu));
        setColor(order[next], fill.Uniform().color);
        if (++next == order.size()) next = 0;
    }
}

struct FilledHandles {
    explicit FilledHandles(std::size_t count) : list(std::make_shared<WRCFillList>()) {
        for (WRefCountFill* entry : bench::NewEntries(count))
            held.emplace_back(entry, list);
    }
    std::shared_ptr<WRCFillList> list;
    std::vector<WFillHandle> held;
};

void EditHandle(benchmark::State& state) {
    FilledHandles& filled = Kept<FilledHandles>(Size(state));
    RunEdits(state, [&](std::uint32_t at, const CLR_COLORSPEC& color) {
        filled.held[at].SetUniformColorspec(&color);
    });
}

struct EditedSet : FilledSet {
    using FilledSet::FilledSet;
};

/// A handle knows its entry and not the entry's place in a tree: the rival looks for it. It takes no lock.
void EditSet(benchmark::State& state) {
    EditedSet& filled = Kept<EditedSet>(Size(state));
    std::vector<WRefCountFill*> held;
    for (const bench::EntrySet::iterator place : filled.places)
        held.push_back(*place);
    RunEdits(state, [&](std::uint32_t at, const CLR_COLORSPEC& color) {
        auto node = filled.set.extract(filled.set.find(held[at]));
        node.value()->GetCGEFill()->EditUniform().color = color;
        filled.set.insert(std::move(node));
    });
}

BENCHMARK(HitPool)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(HitFlyweight)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(HitSet)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(InsertPool)->Arg(10000)->Arg(1000000)->UseManualTime();
BENCHMARK(InsertSet)->Arg(10000)->Arg(1000000)->UseManualTime();
BENCHMARK_TEMPLATE(RemovePool, false)->Arg(1000)->Arg(30000)->Arg(1000000)->UseManualTime();
BENCHMARK_TEMPLATE(RemovePool, true)->Arg(1000)->Arg(30000)->Arg(1000000)->UseManualTime();
BENCHMARK(RemoveSet)->Arg(1000)->Arg(30000)->Arg(1000000)->UseManualTime();
BENCHMARK(EditHandle)->Arg(10000)->Arg(1000000);
BENCHMARK(EditSet)->Arg(10000)->Arg(1000000);

void TwoThreads(benchmark::State& state) {
    HitPool(state);
}
BENCHMARK(TwoThreads)->Arg(10000)->Threads(1)->Threads(2)->UseRealTime();

std::vector<bench::Row> Rows() {
    std::vector<bench::Row> rows;
    for (const char* n : {"100", "10000", "1000000"})
        rows.push_back({std::string("hit, ") + n + ", flyweight", std::string("HitPool/") + n,
                        std::string("HitFlyweight/") + n, 1.0});
    rows.push_back({"hit, 10000, set", "HitPool/10000", "HitSet/10000", 0.4});
    rows.push_back({"hit, 1000000, set", "HitPool/1000000", "HitSet/1000000", 0.28});
    for (const auto& [n, count, reach] : {std::tuple("10000", 1e4, 0.3), std::tuple("1000000", 1e6, 0.12)})
        rows.push_back({std::string("miss and insert, ") + n + ", set",
                        std::string("InsertPool/") + n + "/manual_time",
                        std::string("InsertSet/") + n + "/manual_time", reach, bench::Row::Cost, count});
    for (const auto& [n, count] :
         {std::pair("1000", 1e3), std::pair("30000", 3e4), std::pair("1000000", 1e6)})
        for (const auto& [how, batch] : {std::pair("many at once", "true"), std::pair("one by one", "false")})
            rows.push_back({std::string("removal ") + how + ", " + n + ", set",
                            std::string("RemovePool<") + batch + ">/" + n + "/manual_time",
                            std::string("RemoveSet/") + n + "/manual_time", 0.5, bench::Row::Cost, count});
    for (const char* n : {"10000", "1000000"})
        rows.push_back({std::string("edit through a handle, ") + n + ", set", std::string("EditHandle/") + n,
                        std::string("EditSet/") + n, 0.3});
    rows.push_back({"two threads hitting, to one", "TwoThreads/10000/real_time/threads:2",
                    "TwoThreads/10000/real_time/threads:1", 1.0, bench::Row::Throughput});
    return rows;
}

/// Heap of a distinct pooled fill, all included, as the allocator accounts for it.
void PrintBytesPerFill() {
    for (const std::size_t count : {std::size_t{10000}, std::size_t{13000}}) {
        const std::vector<std::uint32_t> numbers = bench::Shuffled(count);
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const auto list = std::make_shared<WRCFillList>();
        for (const std::uint32_t number : numbers)
            list->AddOrGetCopy(bench::Numbered(number));
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        std::printf("heap per distinct uniform fill, %zu pooled: %.1f bytes, reach 512\n", count,
                    static_cast<double>(after - before) / static_cast<double>(count));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int result = bench::RunAndCompare(argc, argv, Rows());
    PrintBytesPerFill();
    return result;
}
