#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "engines/arrowheads.h"
#include "engines/import_filters.h"
#include "engines/mono_patterns.h"
#include "engines/pattern_images.h"
#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using BuiltInTest = testing_support::LeakCheckedTest;

std::vector<std::uint8_t> Bytes(HMEM block) {
    const auto* data = static_cast<const std::uint8_t*>(MEMMANLock(block));
    std::vector<std::uint8_t> bytes(data, data + MEMMANGetSize(block));
    MEMMANUnlock(block);
    return bytes;
}

TEST_F(BuiltInTest, ArrowheadsAreDistinctPolygons) {
    host::BuiltInArrowheads arrowheads;
    ASSERT_GE(arrowheads.GetCount(), 6u);
    std::set<std::vector<std::uint8_t>> shapes;
    for (unsigned i = 0; i < arrowheads.GetCount(); ++i) {
        const std::vector<std::uint8_t> bytes = Bytes(arrowheads.GetHandle(i));
        ASSERT_GE(bytes.size(), 4u);
        EXPECT_EQ(bytes.size(), 4 + std::size_t{bytes[0]} * 8);
        shapes.insert(bytes);
    }
    EXPECT_EQ(shapes.size(), arrowheads.GetCount());
    EXPECT_EQ(arrowheads.GetHandle(arrowheads.GetCount()), nullptr);
    // The barbed one's count and its first point, (-1000, -2000).
    const std::vector<std::uint8_t> barbed = Bytes(arrowheads.GetHandle(2));
    EXPECT_EQ(std::vector<std::uint8_t>(barbed.begin(), barbed.begin() + 12),
              (std::vector<std::uint8_t>{4, 0, 0, 0, 0x18, 0xFC, 0xFF, 0xFF, 0x30, 0xF8, 0xFF, 0xFF}));
}

TEST_F(BuiltInTest, ArrowheadsAreTheSameByTheirBytes) {
    host::BuiltInArrowheads arrowheads;
    const HMEM first = arrowheads.GetHandle(0);
    const HMEM copy = MEMMANDuplicate(first);
    EXPECT_TRUE(arrowheads.AreSame(first, copy));
    EXPECT_FALSE(arrowheads.AreSame(copy, arrowheads.GetHandle(1)));
    EXPECT_FALSE(arrowheads.AreSame(copy, nullptr));
    EXPECT_TRUE(arrowheads.AreSame(nullptr, nullptr));
    static_cast<std::uint8_t*>(MEMMANLock(copy))[7] ^= 1;
    MEMMANUnlock(copy);
    EXPECT_FALSE(arrowheads.AreSame(first, copy));
    MEMMANFree(copy);
}

TEST_F(BuiltInTest, ArrowheadsFreeAllAndSurviveFailedAllocations) {
    host::BuiltInArrowheads arrowheads;
    const std::size_t before = host::LiveMemoryBlocks();
    EXPECT_GT(testing_support::FailEachAllocation([&] { arrowheads.Load(); },
                                                  [&] { EXPECT_EQ(host::LiveMemoryBlocks(), before); }),
              0u);
    EXPECT_EQ(host::LiveMemoryBlocks(), before + arrowheads.GetCount());
    arrowheads.Free();
    EXPECT_EQ(host::LiveMemoryBlocks(), before);
}

TEST_F(BuiltInTest, MonoPatternsAreDistinctEightByEight) {
    host::BuiltInMonoPatterns patterns;
    std::set<std::vector<std::uint8_t>> seen;
    unsigned count = 0;
    for (; HMEM pattern = patterns.GetPattern(count); ++count) {
        const std::vector<std::uint8_t> bytes = Bytes(pattern);
        ASSERT_EQ(bytes.size(), 12u);
        EXPECT_EQ(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 4),
                  (std::vector<std::uint8_t>{8, 0, 8, 0}));
        seen.insert(bytes);
    }
    EXPECT_GE(count, 16u);
    EXPECT_EQ(seen.size(), count);
    EXPECT_EQ(patterns.GetPattern(0), patterns.GetPattern(0));
}

TEST_F(BuiltInTest, PatternImagesHaveTheirNames) {
    host::BuiltInPatternImages patterns;
    for (const host::WString& name : patterns.GetBitmapNames()) {
        const HUDIIMAGE image = patterns.GetImage(name);
        ASSERT_NE(image, nullptr);
        const HUDIIMAGE again = patterns.GetImage(name);
        EXPECT_EQ(RCF_CompareRImage(UDIIMGGetBaseImage(image), UDIIMGGetBaseImage(again)), 0);
        UDIIMGRelease(again);
        UDIIMGRelease(image);
    }
    EXPECT_EQ(patterns.GetBitmapNames().size(), 3u);
    EXPECT_EQ(patterns.GetImage(L"Tartan"), nullptr);
}

TEST_F(BuiltInTest, FiltersStartWhenAskedAndShutDown) {
    host::StandaloneFilters filters;
    EXPECT_FALSE(filters.IsStarted());
    EXPECT_EQ(filters.GetExtensions(false).front().view(), L"svg");
    EXPECT_TRUE(filters.IsStarted());
    filters.Shutdown();
    EXPECT_FALSE(filters.IsStarted());
}

}  // namespace
