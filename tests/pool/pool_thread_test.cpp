#include <gtest/gtest.h>

#include "pool_kinds.h"

namespace {

constexpr unsigned kThreads = 8;
constexpr unsigned kValues = 24;

/// Takes, gives back and edits equal entries all the time; ends holding one reference on each value.
template <class Kind>
void Work(typename Kind::List& list, unsigned seed, std::atomic<int>& faults) {
    using Entry = typename Kind::Entry;
    std::mt19937 random(seed);
    for (unsigned step = 0; step < 1500; ++step) {
        const std::unique_ptr<Entry> probe(Kind::New(pool_test::Pick(random, kValues)));
        const Entry* held = list.AddOrGetDuplicate(new Entry(*probe), nullptr);
        if (held->Compare(probe.get(), false) != 0 || held->GetReference() < 1) ++faults;
        if (step % 3 != 0) {
            if (!list.RemoveInstance(held)) ++faults;
            continue;
        }
        Entry* taken = list.ExtractInstanceForEditing(held);
        if (!taken || taken->Compare(probe.get(), false) != 0) ++faults;
        const Entry* back = list.AddOrGetDuplicate(taken, nullptr);
        if (!list.RemoveInstance(back)) ++faults;
    }
    for (unsigned value = 0; value < kValues; ++value)
        list.AddOrGetDuplicate(Kind::New(value), nullptr);
}

/// Always in strict order, so that no value is there twice.
template <class Kind>
void Watch(const typename Kind::List& list, std::atomic<int>& faults) {
    const typename Kind::Entry* before = nullptr;
    list.Enumerate([&](const typename Kind::Entry* entry) {
        if (before && before->Compare(entry, false) >= 0) ++faults;
        before = entry;
        return true;
    });
}

template <class Kind>
class PoolThreadTest : public ::testing::Test {};
using Kinds = ::testing::Types<pool_test::Fills, pool_test::Outlines>;
TYPED_TEST_SUITE(PoolThreadTest, Kinds);

TYPED_TEST(PoolThreadTest, KeepsOneEntryPerValueAndExactCounts) {
    using Entry = typename TypeParam::Entry;
    const auto list = std::make_shared<typename TypeParam::List>();
    std::atomic<int> faults{0};
    pool_test::RunWatched(
        kThreads, [&](unsigned i) { Work<TypeParam>(*list, i, faults); },
        [&](unsigned) { Watch<TypeParam>(*list, faults); });

    EXPECT_EQ(faults, 0);
    EXPECT_EQ(list->GetCount(), kValues);
    std::vector<const Entry*> left;
    list->Enumerate([&](const Entry* entry) { return left.push_back(entry), true; });
    for (const Entry* entry : left) {
        EXPECT_EQ(entry->GetReference(), static_cast<long>(kThreads));
        for (unsigned i = 0; i < kThreads; ++i)
            EXPECT_TRUE(list->RemoveInstance(entry));
    }
    EXPECT_EQ(list->GetCount(), 0u);
}

}  // namespace
