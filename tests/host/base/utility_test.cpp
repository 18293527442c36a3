#include <cstring>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

#include "host/base/delegate.h"
#include "host/base/guid.h"
#include "host/base/memory.h"
#include "host/base/singleton.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using VyrUtils::Guid;
using VyrUtils::Singleton;
using VyrUtils::SingletonBase;

TEST(GuidTest, TextRoundTrips) {
    const auto guid = Guid::Parse(L"{01234567-89aB-cDef-0123-456789abcdef}");
    ASSERT_TRUE(guid);
    EXPECT_EQ(guid->ToString().str(), L"01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_EQ(guid->Bytes()[1], 0x23);
    EXPECT_EQ(Guid::Parse(guid->ToString()), guid);
    for (const wchar_t* bad :
         {L"", L"{}", L"{01234567-89ab-cdef-0123-456789abcdef", L"01234567-89ab-cdef-0123-456789abcde",
          L"0123456-789ab-cdef-0123-456789abcdef", L"01234567-89ab-cdef-0123-456789abcdeg",
          L"0123456789abcdef0123456789abcdef", L"01234567-89ab-cdef-0123-456789abcdef0"})
        EXPECT_FALSE(Guid::Parse(bad));
}

TEST(GuidTest, GeneratedOnesDifferOnEveryThread) {
    constexpr std::size_t kEach = 20000;
    std::vector<std::vector<Guid>> made(3);
    {
        std::vector<std::jthread> threads;
        for (auto& list : made)
            threads.emplace_back([&list] {
                for (std::size_t i = 0; i < kEach; ++i)
                    list.push_back(Guid::Generate());
            });
    }
    std::set<Guid> all;
    for (const auto& list : made)
        all.insert(list.begin(), list.end());
    EXPECT_EQ(all.size(), made.size() * kEach);
    EXPECT_FALSE(all.contains(Guid()));
    for (const Guid& guid : all) {
        ASSERT_EQ(guid.Bytes()[6] >> 4, 4);
        ASSERT_EQ(guid.Bytes()[8] >> 6, 2);
    }
}

TEST(MovableMemory, HoldsBytesAndCountsBlocks) {
    testing_support::LeakCheck leaks;
    const HMEM block = MEMMANAlloc(1000, true);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(MEMMANGetSize(block), 1000u);
    auto* bytes = static_cast<unsigned char*>(MEMMANLock(block));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 16, 0u);
    EXPECT_EQ(std::count(bytes, bytes + 1000, 0), 1000);
    std::memset(bytes, 7, 1000);
    const HMEM copy = MEMMANDuplicate(block);
    bytes[999] = 8;
    EXPECT_EQ(static_cast<unsigned char*>(MEMMANLock(copy))[999], 7);
    MEMMANUnlock(copy);
    MEMMANUnlock(block);
    EXPECT_EQ(host::LiveMemoryBlocks(), 2u);
    MEMMANFree(block);
    MEMMANFree(copy);
}

TEST(MovableMemory, RefusesWhatCannotBe) {
    testing_support::LeakCheck leaks;
    for (const std::size_t size : {SIZE_MAX, SIZE_MAX - 15, SIZE_MAX / 2, std::size_t{1} << 40})
        EXPECT_EQ(MEMMANAlloc(size, true), nullptr);
    {
        testing_support::FailAllocation guard(1);
        EXPECT_EQ(MEMMANAlloc(10, false), nullptr);
    }
    EXPECT_EQ(MEMMANLock(nullptr), nullptr);
    EXPECT_EQ(MEMMANGetSize(nullptr), 0u);
    EXPECT_EQ(MEMMANDuplicate(nullptr), nullptr);
    MEMMANUnlock(nullptr);
    MEMMANFree(nullptr);
    MEMMANFree(MEMMANAlloc(0, true));
}

std::vector<int> g_destroyed;

template <int kNumber>
struct Numbered {
    ~Numbered() { g_destroyed.push_back(kNumber); }
};

struct Leaning : Numbered<3> {
    Leaning() { Singleton<Numbered<4>>::GetInstance(); }
};

TEST(SingletonTest, DestroysTheLatestMadeFirstAndStaysDestroyed) {
    EXPECT_FALSE(Singleton<Numbered<1>>::HasInstance());
    auto* one = Singleton<Numbered<1>>::GetInstance();
    Singleton<Numbered<2>>::GetInstance();
    Singleton<Leaning>::GetInstance();
    EXPECT_EQ(Singleton<Numbered<1>>::GetInstance(), one);
    Singleton<Numbered<1>>::ReleaseInstance();
    EXPECT_NE(Singleton<Numbered<1>>::GetInstance(), nullptr);
    g_destroyed.clear();
    SingletonBase::DestroyAll();
    EXPECT_EQ(g_destroyed, (std::vector<int>{1, 3, 4, 2}));
    EXPECT_EQ(Singleton<Numbered<1>>::GetInstance(), nullptr);
    EXPECT_EQ(Singleton<Numbered<5>>::GetInstance(), nullptr) << "was not alive, is not made now";
    SingletonBase::AllowRecreation();
    EXPECT_NE(Singleton<Numbered<1>>::GetInstance(), nullptr);
    SingletonBase::DestroyAll();
    EXPECT_EQ(g_destroyed.size(), 5u);
    SingletonBase::AllowRecreation();
}

TEST(SingletonTest, IsMadeOnceByManyThreads) {
    static std::atomic<int> made;
    made = 0;
    struct Counted {
        Counted() { ++made; }
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([] { Singleton<Counted>::GetInstance(); });
    }
    EXPECT_EQ(made, 1);
    Singleton<Counted>::ReleaseInstance();
}

TEST(DelegateTest, CallsFunctionsAndMembersOrNothing) {
    struct Adder {
        int base;
        int Add(int x) { return base += x; }
    } adder{10};
    Delegate<int(int)> none;
    EXPECT_FALSE(none);
    const Delegate<int(int)> member(&adder, &Adder::Add);
    EXPECT_EQ(member(1) + member(1), 23);
    const safe_function<int(int)> copy = Delegate<int(int)>([](int x) { return 2 * x; });
    EXPECT_EQ(copy(4), 8);
}

TEST(AllocationSupport, FailsTheOneAndMeasures) {
    testing_support::HeapMeter meter;
    const auto rounds = testing_support::FailEachAllocation(
        [] { std::vector<std::vector<int>> lists(1, std::vector<int>(100)); }, [] {});
    EXPECT_EQ(rounds, 3u);
    EXPECT_EQ(meter.ThreadBytes(), 0);
    EXPECT_GE(meter.ThreadPeak(), 800);
    const std::vector<int> kept(1000);
    EXPECT_GE(meter.ThreadBytes(), 4000);
    EXPECT_LE(meter.ProcessBytes(), 4100);
}

}  // namespace
