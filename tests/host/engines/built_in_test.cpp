#include <gtest/gtest.h>
#include <set>
#include <vector>

#include "engines/import_filters.h"
#include "engines/mono_patterns.h"
#include "engines/pattern_images.h"
#include "support/leak_check.h"

namespace {

using BuiltInTest = testing_support::LeakCheckedTest;

std::vector<std::uint8_t> Bytes(HMEM block) {
    const auto* data = static_cast<const std::uint8_t*>(MEMMANLock(block));
    std::vector<std::uint8_t> bytes(data, data + MEMMANGetSize(block));
    MEMMANUnlock(block);
    return bytes;
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
