#include "pool/intern_pool.h"

#include <gtest/gtest.h>
#include <map>

#include "pool_kinds.h"
#include "support/alloc_faults.h"

namespace {

/// An entry that is its value; the note is what neither order nor hash reads.
struct Number : VyrFOM::InternNode {
    explicit Number(unsigned v, unsigned n = 0) : value(v), note(n) {}
    void AddReference(std::int32_t n) { AddToCount(n); }
    std::int32_t Count() const { return m_count.load(); }
    unsigned value;
    unsigned note;
};

}  // namespace

template <>
struct VyrFOM::InternTraits<Number> {
    static void Prepare(Number&) {}
    static std::uint64_t Hash(const Number& n) { return n.value % 64 * 0x9E3779B97F4A7C15u; }  // collisions
    static bool AreEqual(const Number& a, const Number& b) { return a.value == b.value; }
    static int Compare(const Number& a, const Number& b) {
        return static_cast<int>(a.value) - static_cast<int>(b.value);
    }
    static void GiveGuid(Number&) {}
};

namespace {

using Pool = VyrFOM::InternPool<Number>;

/// Two pools beside a map for each, changed alike.
class Model {
public:
    struct Held {
        unsigned pool;
        const Number* entry;
    };
    std::vector<Held> held;

    void Add(unsigned pool, unsigned value) {
        auto* entry = new Number(value);
        Hold(pool, m_pools[pool].AddOrGetDuplicate(entry, nullptr), value, entry);
    }
    void Remove(std::size_t at) {
        const Held gone = TakeHeld(at);
        ASSERT_TRUE(m_pools[gone.pool].RemoveInstance(gone.entry));
    }
    void Edit(std::size_t at, unsigned value, unsigned note) {
        const auto [pool, entry] = held[at];
        const bool isAlone = entry->Count() == 1;
        const auto fail = [](Number&) { throw std::bad_alloc(); };
        if (isAlone) {
            ASSERT_THROW(m_pools[pool].EditInstance(entry, fail), std::bad_alloc);
        }
        const auto* edited = m_pools[pool].EditInstance(entry, [=](Number& n) {
            n.value = value;
            n.note = note;
        });
        ASSERT_EQ(edited != nullptr, isAlone);
        if (!isAlone) return;
        TakeHeld(at);
        Hold(pool, edited, value, entry);
        ASSERT_TRUE(edited != entry || edited->note == note);
    }
    void Replace(std::size_t at, unsigned value, unsigned note) {
        const auto [pool, old] = held[at];
        const bool isAlone = old->Count() == 1;
        auto* fresh = new Number(value, note);
        const Number* pooled = m_pools[pool].ReplaceInstance(old, fresh, nullptr);
        if (isAlone) TakeHeld(at);
        Hold(pool, pooled, value, fresh);
        if (!isAlone) TakeHeld(at);
    }
    void Adopt(std::size_t at) {
        const auto [pool, entry] = held[at];
        const unsigned value = entry->value;
        const bool isAlone = entry->Count() == 1;
        const Number* pooled = m_pools[1 - pool].AdoptInstance(m_pools[pool], entry);
        ASSERT_EQ(pooled != nullptr, isAlone);
        if (!isAlone) return;
        TakeHeld(at);
        Hold(1 - pool, pooled, value, entry);
    }
    void CheckOrder() const {
        for (unsigned pool = 0; pool < 2; ++pool) {
            std::vector<const Number*> seen, expected;
            m_pools[pool].Enumerate([&](const Number* entry) { return seen.push_back(entry), true; });
            for (const auto& [value, row] : m_rows[pool]) {
                expected.push_back(row.entry);
                ASSERT_EQ(row.entry->value, value);
                ASSERT_EQ(row.entry->Count(), row.count);
            }
            ASSERT_EQ(seen, expected);
            ASSERT_EQ(m_pools[pool].GetCount(), expected.size());
        }
    }

private:
    struct Row {
        const Number* entry = nullptr;
        std::int32_t count = 0;
    };

    void Hold(unsigned pool, const Number* pooled, unsigned value, const Number* ifNew) {
        Row& row = m_rows[pool][value];
        if (row.count++ == 0) row.entry = ifNew;
        ASSERT_EQ(pooled, row.entry);
        held.push_back({pool, pooled});
    }
    Held TakeHeld(std::size_t at) {
        const Held gone = held[at];
        held[at] = held.back();
        held.pop_back();
        auto& rows = m_rows[gone.pool];
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const auto& r) { return r.second.entry == gone.entry; });
        if (--row->second.count == 0) rows.erase(row);
        return gone;
    }

    ThreadLock m_lock, m_otherLock;
    Pool m_pools[2]{Pool(m_lock, nullptr), Pool(m_otherLock, nullptr)};
    std::map<unsigned, Row> m_rows[2];
};

// Enumerates seldom and often by turns: places are taken in a long tail and in one that is always sorted.
TEST(InternPoolTest, StepsOnHeldEntriesBehaveAsInAMap) {
    Model model;
    std::mt19937 random(9);
    for (unsigned step = 0; step < 20000; ++step) {
        const unsigned phase = step / 2000;
        const unsigned dice = pool_test::Pick(random, 100);
        const unsigned value = pool_test::Pick(random, 500);
        const std::size_t at = model.held.empty() ? 0 : random() % model.held.size();
        if (model.held.empty() || dice < (phase % 3 == 2 ? 5u : 25u))
            model.Add(step % 2, value);
        else if (dice < 50)
            model.Edit(at, value, step);
        else if (dice < 65)
            model.Replace(at, step % 5 == 0 ? model.held[at].entry->value : value, step);
        else if (dice < 80)
            model.Adopt(at);
        else
            model.Remove(at);
        if (step % (phase % 2 == 0 ? 20 : 500) == 0) model.CheckOrder();
        if (HasFatalFailure()) return;
    }
    model.CheckOrder();
}

TEST(InternPoolTest, TheOnlyHolderGetsItsNewEntryThoughTheOldOneIsEqual) {
    const ThreadLock lock;
    Pool pool(lock, nullptr);
    const Number* old = pool.AddOrGetDuplicate(new Number(1, 1), nullptr);
    const Number* fresh = pool.ReplaceInstance(old, new Number(1, 2), nullptr);
    EXPECT_EQ(fresh->note, 2u);
    pool.AddOrGetDuplicate(const_cast<Number*>(fresh), nullptr);
    EXPECT_EQ(pool.ReplaceInstance(fresh, new Number(1, 3), nullptr), fresh) << "others hold it";
    EXPECT_EQ(fresh->Count(), 2);
}

TEST(InternPoolTest, FailuresOfMemoryChangeNothing) {
    const ThreadLock lock, otherLock;
    Pool pool(lock, nullptr), other(otherLock, nullptr);
    MemoryFileStream stream;
    std::size_t failed = 0;
    for (unsigned i = 0; i < 200; ++i) {
        const unsigned value = i * 4;
        const auto sort = [&] { pool.Enumerate([](const Number*) { return true; }); };
        const Number* held = pool.AddOrGetDuplicate(new Number(value), nullptr);
        const Number* taken = pool.AddOrGetDuplicate(new Number(value + 1), nullptr);
        sort();
        const auto check = [&] {
            EXPECT_EQ(held->value, value);
            EXPECT_EQ(held->Count(), 1);
            EXPECT_EQ(pool.GetCount(), 2u * i + 2);
            EXPECT_EQ(other.GetCount(), i);
        };
        const Number* edited = nullptr;
        failed += testing_support::FailEachAllocation(
            [&] { edited = pool.EditInstance(held, [&](Number& n) { n.value = value + 2; }); }, check);
        sort();
        auto* loser = new Number(value + 1);
        const auto unchanged = [&] { EXPECT_EQ(edited->Count() + taken->Count(), 2); };
        failed += testing_support::FailEachAllocation([&] { pool.ReplaceInstance(edited, loser, &stream); },
                                                      unchanged);
        EXPECT_EQ(taken->Count(), 2);
        held = pool.AddOrGetDuplicate(new Number(value), nullptr);
        failed += testing_support::FailEachAllocation([&] { other.AdoptInstance(pool, held); }, check);
        pool.AddOrGetDuplicate(new Number(value), nullptr);
    }
    EXPECT_GE(failed, 200u + 8);
    VyrFOM::PendingDuplicates<Number>::Instance().EndLoad(stream);
}

// Holes are closed instead of growing; what was taken out finds room again without memory.
TEST(InternPoolTest, MemoryStaysBoundedUnderChurn) {
    constexpr unsigned kHeld = 1000;
    const ThreadLock lock;
    Pool pool(lock, nullptr);
    std::vector<const Number*> held(kHeld);
    const testing_support::HeapMeter meter;
    for (unsigned value = 0; value < 60 * kHeld; ++value) {
        if (value >= kHeld) {
            ASSERT_TRUE(pool.RemoveInstance(held[value % kHeld]));
        }
        held[value % kHeld] = pool.AddOrGetDuplicate(new Number(value), nullptr);
        if (value == 2 * kHeld) pool.Enumerate([](const Number*) { return true; });
        if (value < kHeld || value % 7 != 0) continue;
        const Number* other = held[value * 13 % kHeld];
        const testing_support::FailAllocation guard(1);
        ASSERT_EQ(pool.AddOrGetDuplicate(pool.ExtractInstanceForEditing(other), nullptr), other);
    }
    EXPECT_LE(meter.ThreadPeak(), std::ptrdiff_t{200} * kHeld);
}

constexpr unsigned kWorkers = 6;
constexpr unsigned kValues = 40;

/// Adds, edits, replaces, moves and removes; what it holds has the value that it was given all the time.
void Work(Pool* pools, unsigned seed, std::atomic<int>& faults) {
    std::mt19937 random(seed);
    for (unsigned step = 0; step < 3000; ++step) {
        unsigned at = step % 2;
        unsigned value = pool_test::Pick(random, kValues);
        const Number* held = pools[at].AddOrGetDuplicate(new Number(value), nullptr);
        for (unsigned i = 0; i < 3; ++i) {
            const unsigned next = pool_test::Pick(random, kValues);
            const Number* changed = nullptr;
            if (i == 0)
                changed = pools[at].EditInstance(held, [=](Number& n) { n.value = next; });
            else if (i == 1)
                changed = pools[at].ReplaceInstance(held, new Number(next), nullptr);
            if (changed) {
                held = changed;
                value = next;
            } else if (const Number* moved = pools[1 - at].AdoptInstance(pools[at], held)) {
                held = moved;
                at = 1 - at;
            }
            if (held->value != value || held->Count() < 1) ++faults;
        }
        if (!pools[at].RemoveInstance(held)) ++faults;
    }
}

TEST(InternPoolTest, ThreadsNeverSeeHalfAChange) {
    const ThreadLock lock, otherLock;
    Pool pools[2]{Pool(lock, nullptr), Pool(otherLock, nullptr)};
    std::atomic<int> faults{0};
    const auto watch = [&](unsigned round) {
        const Number* before = nullptr;
        pools[round % 2].Enumerate([&](const Number* entry) {
            if (before && before->value >= entry->value) ++faults;
            before = entry;
            return true;
        });
    };
    pool_test::RunWatched(
        kWorkers, [&](unsigned i) { Work(pools, i, faults); }, watch);
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(pools[0].GetCount() + pools[1].GetCount(), 0u);
}

}  // namespace
