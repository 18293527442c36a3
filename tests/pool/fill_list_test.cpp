#include "fom/fill_list.h"

#include <gtest/gtest.h>
#include <stdexcept>

#include "host/stream/file_stream.h"

#include "pool_kinds.h"
#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using VyrUtils::Guid;

template <class Kind>
class PoolTest : public testing_support::LeakCheckedTest {
public:
    using Entry = typename Kind::Entry;

    const Entry* Add(unsigned value, AbstractFileStream* stream = nullptr) {
        return list->AddOrGetDuplicate(Kind::New(value), stream);
    }

    std::shared_ptr<typename Kind::List> list = std::make_shared<typename Kind::List>();
};
using Kinds = ::testing::Types<pool_test::Fills, pool_test::Outlines>;
TYPED_TEST_SUITE(PoolTest, Kinds);

TYPED_TEST(PoolTest, OneIdentifierOfManyIsKept) {
    auto* first = TypeParam::New(1);
    auto* second = TypeParam::New(1);
    const Guid guid = Guid::Generate();
    TypeParam::SetGuid(*first, guid);
    const auto* pooled = this->list->AddOrGetDuplicate(first, nullptr);
    EXPECT_EQ(pooled, first);
    EXPECT_EQ(this->list->AddOrGetDuplicate(second, nullptr), first);
    EXPECT_EQ(first->GetReference(), 2);
    EXPECT_EQ(TypeParam::GuidOf(*first), guid);
    EXPECT_EQ(this->list->AddOrGetDuplicate(first, nullptr), first);
    EXPECT_EQ(first->GetReference(), 3);

    const auto* other = this->Add(2);
    EXPECT_FALSE(TypeParam::GuidOf(*other).IsNil());
    MemoryFileStream stream;
    auto* parked = TypeParam::New(2);
    this->list->AddOrGetDuplicate(parked, &stream);
    EXPECT_FALSE(TypeParam::GuidOf(*parked).IsNil());
    EXPECT_NE(TypeParam::GuidOf(*parked), TypeParam::GuidOf(*other));
    this->list->EndLoad(stream);
}

TYPED_TEST(PoolTest, GivingUpReferences) {
    auto& list = *this->list;
    EXPECT_FALSE(list.RemoveInstance(nullptr));
    EXPECT_EQ(list.ExtractInstanceForEditing(nullptr), nullptr);
    EXPECT_EQ(list.AddOrGetDuplicate(nullptr, nullptr), nullptr);

    struct {
        bool isPooled;
        long count;
        bool removed;
        bool extracted;
    } const cases[] = {{true, 3, true, true},  {true, 2, true, true},    {true, 1, true, true},
                       {false, 2, true, true}, {false, 1, false, false}, {false, 0, true, true},
                       {false, -1, true, true}};
    for (const auto& c : cases) {
        for (const bool extract : {false, true}) {
            SCOPED_TRACE(std::to_string(c.count) + (c.isPooled ? " pooled" : " apart"));
            std::unique_ptr<typename TypeParam::Entry> apart(TypeParam::New(4));
            auto* entry = c.isPooled ? apart.release() : apart.get();
            if (c.isPooled) list.AddOrGetDuplicate(entry, nullptr);
            entry->AddReference(c.count - entry->GetReference());
            const bool leaves = c.isPooled && c.count == 1;
            if (extract) {
                std::unique_ptr<typename TypeParam::Entry> taken(list.ExtractInstanceForEditing(entry));
                EXPECT_EQ(taken != nullptr, c.extracted);
                EXPECT_EQ(taken.get() == entry, leaves);
                EXPECT_TRUE(!taken || taken->GetReference() == 0);
            } else {
                EXPECT_EQ(list.RemoveInstance(entry), c.removed);
            }
            EXPECT_TRUE(leaves || entry->GetReference() == c.count - 1);
            EXPECT_EQ(list.GetCount(), c.isPooled && !leaves ? 1u : 0u);
            while (list.GetCount() != 0)
                list.RemoveInstance(entry);
        }
    }
}

// With as many ways for a loser to come back as there are: each is freed once, which the sanitizer and the
// leak checks of the build see.
TYPED_TEST(PoolTest, ParkedLosersAreFreedOnce) {
    auto& list = *this->list;
    MemoryFileStream stream, other;
    const auto* winner = this->Add(1);
    const testing_support::HeapMeter meter;
    auto* twice = TypeParam::New(1);
    for (AbstractFileStream* s : {&stream, &stream, &other})
        EXPECT_EQ(list.AddOrGetDuplicate(twice, s), winner);
    EXPECT_EQ(list.AddOrGetDuplicate(twice, nullptr), winner) << "parked: not freed at once";
    list.EndLoad(stream);
    EXPECT_EQ(twice->Compare(winner, false), 0) << "the other load still needs it";
    auto* pooledLater = TypeParam::New(1);
    list.AddOrGetDuplicate(pooledLater, &other);
    for (int i = 0; i < 6; ++i)
        list.RemoveInstance(winner);
    EXPECT_EQ(list.GetCount(), 0u);
    EXPECT_EQ(list.AddOrGetDuplicate(pooledLater, &other), pooledLater) << "no duplicate any more";
    list.EndLoad(other);
    list.EndLoad(other);
    EXPECT_EQ(pooledLater->GetReference(), 1);
    EXPECT_TRUE(list.RemoveInstance(pooledLater));

    auto* survivor = TypeParam::New(1);
    auto* deletedByItsHolder = TypeParam::New(1);
    list.AddOrGetDuplicate(survivor, nullptr);
    EXPECT_EQ(list.AddOrGetDuplicate(deletedByItsHolder, &stream), survivor);
    delete deletedByItsHolder;
    list.EndLoad(stream);
    EXPECT_TRUE(list.RemoveInstance(survivor));
    EXPECT_TRUE(list.RemoveInstance(survivor));
    EXPECT_LE(meter.ThreadBytes(), 0);
}

TYPED_TEST(PoolTest, RunsOutOfMemoryWithoutATrace) {
    auto& list = *this->list;
    MemoryFileStream stream;
    const auto* shared = this->Add(0);
    list.AddOrGetDuplicate(const_cast<typename TypeParam::Entry*>(shared), nullptr);
    std::size_t failed = 0;
    for (unsigned value = 1; value < 40; ++value) {
        auto* entry = TypeParam::New(value);
        failed += testing_support::FailEachAllocation([&] { list.AddOrGetDuplicate(entry, nullptr); },
                                                      [&] {
                                                          EXPECT_EQ(list.GetCount(), value);
                                                          EXPECT_EQ(entry->GetReference(), 0);
                                                      });
        EXPECT_EQ(entry->GetReference(), 1);
    }
    auto* loser = TypeParam::New(0);
    failed += testing_support::FailEachAllocation([&] { list.AddOrGetDuplicate(loser, &stream); },
                                                  [&] { EXPECT_EQ(shared->GetReference(), 2); });
    list.EndLoad(stream);
    failed += testing_support::FailEachAllocation([&] { delete list.ExtractInstanceForEditing(shared); },
                                                  [&] { EXPECT_EQ(shared->GetReference(), 3); });
    unsigned seen = 0;
    const auto visitAll = [&] {
        seen = 0;
        list.Enumerate([&seen](const auto*) { return ++seen, true; });
    };
    // Sorting does without its buffer.
    failed += testing_support::FailEachAllocation(visitAll, [&] { EXPECT_TRUE(seen == 0 || seen == 40); });
    EXPECT_EQ(seen, 40u);
    EXPECT_GE(failed, 8u);
}

TYPED_TEST(PoolTest, EnumerationStopsNestsAndRefusesChanges) {
    using Entry = typename TypeParam::Entry;
    auto& list = *this->list;
    for (unsigned value = 0; value < 5; ++value)
        this->Add(value);
    unsigned seen = 0;
    list.Enumerate([&](const Entry*, void* user) { return ++*static_cast<unsigned*>(user) < 3; }, &seen);
    EXPECT_EQ(seen, 3u);
    list.Enumerate(Delegate<bool(const Entry*)>());

    typename TypeParam::List otherList;
    const Entry* elsewhere = otherList.AddOrGetDuplicate(TypeParam::New(1), nullptr);
    const std::unique_ptr<Entry> unpooled(TypeParam::New(1));
    unpooled->AddReference(1);
    seen = 0;
    list.Enumerate([&](const Entry* entry) {
        const Entry* again = list.AddOrGetDuplicate(new Entry(*entry), nullptr);
        EXPECT_EQ(again, entry);
        EXPECT_EQ(list.RemoveInstances(std::span(&again, 1)), 1u) << "not the last reference";
        list.Enumerate([&](const Entry*) { return ++seen, true; });
        const Entry* apart[] = {elsewhere, unpooled.get()};
        EXPECT_FALSE(list.RemoveInstance(apart[seen % 2])) << "no change of the list that is visited";
        EXPECT_EQ(list.RemoveInstances(std::span(&apart[1 - seen % 2], 1)), 0u);
        EXPECT_EQ(elsewhere->GetReference() + unpooled->GetReference(), 0);
        for (const Entry* entry2 : apart)
            const_cast<Entry*>(entry2)->AddReference(1);
        return true;
    });
    EXPECT_EQ(seen, 25u);

    const auto change = [&](const Entry* entry) {
        EXPECT_FALSE(list.RemoveInstance(entry));
        EXPECT_EQ(list.ExtractInstanceForEditing(entry), nullptr);
        std::unique_ptr<Entry> another(TypeParam::New(9));
        EXPECT_THROW(list.AddOrGetDuplicate(another.get(), nullptr), std::logic_error);
        return false;
    };
#ifdef NDEBUG
    list.Enumerate(change);
    EXPECT_EQ(list.GetCount(), 5u);
#else
    EXPECT_DEATH(list.Enumerate(change), "must not change");
#endif
}

class FillListTest : public testing_support::LeakCheckedTest {};

TEST_F(FillListTest, KnowsTheHolderOfAnEntry) {
    auto list = std::make_shared<WRCFillList>();
    auto* entry = new WRefCountFill(true);
    EXPECT_EQ(WRCFillList::GetHolder(nullptr), nullptr);
    EXPECT_EQ(WRCFillList::GetHolder(entry), nullptr);
    list->AddOrGetDuplicate(entry, nullptr);
    EXPECT_EQ(WRCFillList::GetHolder(entry), list);
    EXPECT_EQ(list->ExtractInstanceForEditing(entry), entry);
    EXPECT_EQ(WRCFillList::GetHolder(entry), nullptr);
    delete entry;
}

TEST_F(FillListTest, CopiesOfRecordsMeetEntries) {
    const auto list = std::make_shared<WRCFillList>();
    const WRefCountFill* black = list->AddOrGetDuplicate(new WRefCountFill(true), nullptr);
    auto* named = new WRefCountFill(true);
    named->SetColorName(L"Ink", 0);
    list->AddOrGetDuplicate(named, nullptr);
    auto* marked = new WRefCountFill(true);
    marked->SetUserData(1);
    list->AddOrGetDuplicate(marked, nullptr);
    const testing_support::HeapMeter meter;
    EXPECT_EQ(list->AddOrGetCopy(*named->GetCGEFill()), black) << "plain: neither names nor user data";
    EXPECT_EQ(meter.ThreadPeak(), 0) << "a hit allocates nothing";
    const WRefCountFill* none = list->AddOrGetCopy(CGE_FILL());
    EXPECT_EQ(list->AddOrGetDuplicate(new WRefCountFill(false), nullptr), none);
    EXPECT_FALSE(none->GetGuid().IsNil());
    EXPECT_EQ(list->GetCount(), 4u);
}

TEST_F(FillListTest, ADistinctUniformFillIsCheap) {
    constexpr unsigned kFills = 10000;
    const auto list = std::make_shared<WRCFillList>();
    const testing_support::HeapMeter meter;
    CGE_FILL fill(FillUniform);
    for (unsigned i = 0; i < kFills; ++i) {
        fill.EditUniform().color.MakeSpot(i, 100);
        list->AddOrGetCopy(fill);
    }
    list->Enumerate([](const WRefCountFill*) { return false; });
    EXPECT_EQ(list->GetCount(), kFills);
    EXPECT_LE(meter.ThreadBytes(), std::ptrdiff_t{300} * kFills);
}

TEST_F(FillListTest, ProcessWidePools) {
    const auto original = GetOriginalActiveFillList();
    ASSERT_TRUE(original);
    EXPECT_EQ(GetActiveFillList(), original);
    std::weak_ptr<WRCFillList> second;
    {
        auto list = std::make_shared<WRCFillList>();
        second = list;
        SetActiveFillList(std::move(list));
    }
    EXPECT_EQ(FOMGetActiveFillList(), second.lock());
    EXPECT_EQ(GetOriginalActiveFillList(), original);
    SetActiveFillList(original);
    EXPECT_TRUE(second.expired());

    WRCOutlineList outlines;
    WRCOutlineList* const first = GetActiveOutlineList();
    EXPECT_EQ(first, GetOriginalActiveOutlineList());
    SetActiveOutlineList(&outlines);
    EXPECT_EQ(GetActiveOutlineList(), &outlines);
    SetActiveOutlineList(first);
}

}  // namespace
