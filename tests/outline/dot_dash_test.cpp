#include "fom/dot_dash.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr CGE_DOTDASHSPEC kTwelveOnes{12, {1, 1, 1, 1, 1, 1, 1, 1, 1, 1}};

TEST(DotDash, ChecksAndRepairs) {
    struct Row {
        CGE_DOTDASHSPEC pattern;
        bool valid, kept;
        CGE_DOTDASHSPEC fixed;
    };
    const CGE_DOTDASHSPEC replaced{2, {1, 1}};
    const Row rows[] = {
        {{4, {3, 1, 2, 2}}, true, true, {4, {3, 1, 2, 2}}},
        {{2, {3, 1, -5}}, true, true, {2, {3, 1}}},  // beyond the count nothing matters
        {{4, {kMax, kMax, kMax, kMax}}, true, true, {4, {kMax, kMax, kMax, kMax}}},
        {{2, {0, 0}}, false, true, {2, {0, 0}}},
        {{4, {3, -1, 2, 2}}, false, false, replaced},
        {{4, {3, 1, 2, -2}}, false, true, {2, {3, 1}}},
        {{3, {3, 1, 2}}, false, true, {2, {3, 1}}},
        {{1, {3}}, false, false, replaced},
        {{0, {3, 1}}, false, false, replaced},
        {kTwelveOnes, false, true, {10, kTwelveOnes.element}},
        {{65535, {1, 1, 1, 1, 1, 1, 1, 1, 1, -1}}, false, true, {8, kTwelveOnes.element}},
    };
    for (const Row& row : rows) {
        CGE_DOTDASHSPEC pattern = row.pattern;
        EXPECT_EQ(row.valid, OUTIsValidDotDash(pattern)) << &row - rows;
        EXPECT_EQ(row.kept, OUTFixDotDash(pattern)) << &row - rows;
        EXPECT_EQ(row.fixed.count, pattern.count) << &row - rows;
        EXPECT_EQ(row.fixed, pattern) << &row - rows;
    }
}

TEST(DotDash, OrderIsByCountThenByStoredBytes) {
    // Ascending. 256 is stored 00 01 00 00, -1 as ff ff ff ff.
    const CGE_DOTDASHSPEC ascending[] = {{1, {9}},        {2, {0, 5}},  {2, {256, 0}}, {2, {1, 0}},
                                         {2, {1, 65536}}, {2, {-1, 0}}, kTwelveOnes,   {13, {}}};
    for (const CGE_DOTDASHSPEC& a : ascending) {
        for (const CGE_DOTDASHSPEC& b : ascending)
            EXPECT_EQ((&a > &b) - (&a < &b), OUTCompareDotDash(&a, &b))
                << &a - ascending << ' ' << &b - ascending;
        EXPECT_EQ(1, OUTCompareDotDash(&a, nullptr));
        EXPECT_EQ(-1, OUTCompareDotDash(nullptr, &a));
    }
    EXPECT_EQ(0, OUTCompareDotDash(nullptr, nullptr));
    const CGE_DOTDASHSPEC a{1, {9, 1}}, b{1, {9, 2}};
    EXPECT_EQ(0, OUTCompareDotDash(&a, &b));
}

}  // namespace
