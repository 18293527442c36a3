#include "fom/hatch_lines.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <random>

#include "host/gfx/des9_wideline.h"

#include "fom/outline_record.h"

#include "support/alloc_faults.h"

namespace {

/// Angle, spacing, offset and origin.
using Line = std::array<std::int32_t, 5>;
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

Line Map(const Line& line, const MATRIX& m) {
    CGE_HATCHFILL hatch;
    hatch.lines.push_back({{line[3], line[4]}, line[2], line[1], line[0], {}});
    VyrFOM::TransformHatchLines(hatch, m);
    const CGE_HATCHLINE& mapped = hatch.lines[0];
    return {mapped.angle, mapped.spacing, mapped.offset, mapped.origin.x, mapped.origin.y};
}

VECTOR2D Along(const Line& line) {
    const double radians = line[0] / 180e6 * std::numbers::pi;
    return {std::cos(radians), std::sin(radians)};
}

/// Where the dashes of neighbour number `k` begin.
VECTOR2D Start(const Line& line, int k) {
    const VECTOR2D u = Along(line);
    return {line[3] + k * (line[2] * u.x - line[1] * u.y), line[4] + k * (line[2] * u.y + line[1] * u.x)};
}

double Distance(VECTOR2D a, VECTOR2D b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

TEST(HatchLines, KnownTransforms) {
    const Line line{200000000, -5000, 70, 300, -40};
    EXPECT_EQ(line, Map(line, {}));
    EXPECT_EQ((Line{200000000, -15000, 210, 910, -100}), Map(line, {3, 0, 0, 3, 10, 20}));
    EXPECT_EQ((Line{290000000, -5000, 70, 40, 300}), Map(line, {0, 1, -1, 0, 0, 0}));
    EXPECT_EQ((Line{150000000, 1000, 0, 0, 0}), Map({30000000, 1000, 0, 0, 0}, {-1, 0, 0, 1, 0, 0}));
    EXPECT_EQ((Line{0, 2, 0, 2, -2}), Map({0, 1, 0, 1, -1}, {1.5, 0, 0, 1.5, 0, 0}))
        << "halves away from zero";
    EXPECT_EQ((Line{180000000, kMax, 0, -1000000000, kMax}), Map({0, 5, 0, 1, 9}, {-1e9, 0, 0, 1e9, 0, 0}));
}

TEST(HatchLines, NeighboursMapToNeighbours) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> element(-3, 3);
    std::uniform_int_distribution<std::int32_t> angle(-720000000, 720000000), length(-100000, 100000);
    for (int round = 0; round < 2000; ++round) {
        const MATRIX m{element(random), element(random), element(random), element(random), 500, -900};
        if (std::abs(Determinant(m)) < 0.1) continue;
        const Line before{angle(random), length(random), length(random), length(random), length(random)};
        const Line after = Map(before, m);
        // Stepping the other way through the family gives the same lines.
        const VECTOR2D mapped = TransformPoint(m, Start(before, 1));
        ASSERT_LT(std::min(Distance(Start(after, 1), mapped), Distance(Start(after, -1), mapped)), 4)
            << round;
        const VECTOR2D along = TransformVector(m, Along(before)), u = Along(after);
        ASSERT_NEAR(along.x * u.y, along.y * u.x, 1e-6) << round;
        ASSERT_GT(along.x * u.x + along.y * u.y, 0) << round;
    }
}

TEST(HatchLines, UselessMatricesChangeNothing) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    const Line line{45000000, 5000, 0, 1, 1};
    for (const MATRIX& m : {MATRIX{1, 2, 2, 4, 0, 0}, MATRIX{1, 0, 0, inf, 0, 0},
                            MATRIX{1, 0, 0, 1, std::nan(""), 0}, MATRIX{1e300, 0, 0, 1e300, 0, 0}})
        EXPECT_EQ(line, Map(line, m));
}

TEST(HatchLines, PensFollowAsPensAndForgetTheirTransforms) {
    CGE_HATCHFILL hatch;
    hatch.SetHatchArraySize(2);
    hatch.lines[1].pen.width = 30;
    CGE_OUTLINE& pen = hatch.lines[0].pen;
    pen.width = 100;
    pen.dotLength = 10;
    pen.matrix.tx = 9;
    CGE_DES9_WIDELINE wideline;
    wideline.threadWidth = 50;
    pen.SetToWideline(wideline);
    const CGE_HATCHFILL before = hatch;
    const auto check = [&] {
        ASSERT_EQ(0, OUTCompareOutlines(&before.lines[0].pen, &pen, false));
        ASSERT_EQ(30, hatch.lines[1].pen.width);
    };
    VyrFOM::PreAdjustHatchPenWidths(hatch, {1, 2, 2, 4, 0, 0});
    check();
    EXPECT_NE(0u, testing_support::FailEachAllocation(
                      [&] {
                          VyrFOM::PreAdjustHatchPenWidths(hatch, {0, 2, -8, 0, 0, 0});
                      },
                      check));
    EXPECT_EQ(800, pen.width);
    EXPECT_EQ(25, pen.nibStretch);
    EXPECT_EQ(80u, pen.dotLength);
    EXPECT_EQ(400, dynamic_cast<const CGE_DES9_WIDELINE&>(*pen.GetWideline()).threadWidth);
    EXPECT_EQ(240, hatch.lines[1].pen.width);
    VyrFOM::PostAdjustHatchPenWidths(hatch, {1e9, 0, 0, 1e9, 0, 0});
    EXPECT_EQ(kMax, pen.width);
    VyrFOM::ClearHatchLineTransfos(hatch);
    EXPECT_EQ(MATRIX(), pen.matrix);
}

}  // namespace
