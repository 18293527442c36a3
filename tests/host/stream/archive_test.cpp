#include "host/stream/archive.h"

#include <gtest/gtest.h>

#include "host/base/memory.h"

#include "support/alloc_faults.h"
#include "support/faulty_stream.h"

namespace {

constexpr int kOther = 0;

TEST(PtrRemapper, NumbersObjectsByAddressAndKind) {
    udi::PersistentPtrRemapper remapper;
    int first = 0, second = 0;
    EXPECT_EQ(remapper.MapPtr(nullptr, kOther), 0u);
    EXPECT_EQ(remapper.MapPtr(&first, kOther), 1u);
    EXPECT_EQ(remapper.MapPtr(&second, udi::kPtrBlock), 2u);
    EXPECT_EQ(remapper.MapPtr(&first, udi::kPtrBlock), 3u);
    EXPECT_EQ(remapper.MapPtr(&first, kOther), 1u);
    EXPECT_EQ(remapper.UnmapPtr(1, kOther), &first);
    EXPECT_EQ(remapper.UnmapPtr(2, udi::kPtrBlock), &second);
    for (const int kind : {kOther, int{udi::kPtrBlock}})
        EXPECT_EQ(remapper.UnmapPtr(0, kind), nullptr);
    for (const std::uint32_t unknown : {1u, 4u, 0xFFFFFFFFu})
        EXPECT_EQ(remapper.UnmapPtr(unknown, udi::kPtrBlock), host::UnresolvedBlock());
    EXPECT_EQ(remapper.UnmapPtr(2, kOther), nullptr) << "a block is no other object";
    EXPECT_EQ(remapper.UnmapPtr(4, kOther), nullptr);
    EXPECT_GE(testing_support::FailEachAllocation([&] { remapper.MapPtr(&remapper, kOther); },
                                                  [&] { EXPECT_EQ(remapper.UnmapPtr(4, kOther), nullptr); }),
              1u);
    EXPECT_EQ(remapper.MapPtr(&remapper, kOther), 4u) << "a failure gives no number away";
}

TEST(UnresolvedBlock, IsEmptyAndStays) {
    const std::size_t alive = host::LiveMemoryBlocks();
    const HMEM block = host::UnresolvedBlock();
    EXPECT_NE(block, nullptr);
    MEMMANFree(block);
    EXPECT_EQ(MEMMANGetSize(block), 0u);
    EXPECT_NE(MEMMANLock(block), nullptr);
    MEMMANUnlock(block);
    const HMEM copy = MEMMANDuplicate(block);
    EXPECT_NE(copy, block);
    MEMMANFree(copy);
    EXPECT_EQ(host::LiveMemoryBlocks(), alive);
}

TEST(OutputArchive, GathersUntilItIsFlushed) {
    MemoryFileStream stream;
    udi::PersistentPtrRemapper remapper;
    const ColorSystem::ColorContext context;
    {
        udi::OutputArchive archive(stream, remapper, context);
        archive.GetBytes() = {1, 2};
        archive.Flush();
        EXPECT_EQ(stream.GetBytes().size(), 2u);
        archive.GetBytes().push_back(3);
        EXPECT_EQ(stream.GetBytes().size(), 2u);
    }
    EXPECT_EQ(stream.GetBytes().size(), 3u);
    MemoryFileStream disk;
    testing_support::FaultyStream full(disk);
    full.EndAfter(0);
    {
        udi::OutputArchive archive(full, remapper, context);
        archive.Flush();
        EXPECT_TRUE(full.IsGood()) << "nothing to write";
        archive.GetBytes().push_back(1);
    }
    EXPECT_FALSE(full.IsGood());
}

}  // namespace
