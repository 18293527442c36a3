#include "fom/pen_width.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <numbers>
#include <random>

#include "host/gfx/des9_wideline.h"

#include "fom/outline_record.h"

#include "support/alloc_faults.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

CGE_OUTLINE Pen(std::int32_t width, int stretch, std::int32_t angle) {
    CGE_OUTLINE pen;
    pen.type = OutlineSolid;
    pen.width = width;
    pen.nibStretch = static_cast<std::int16_t>(stretch);
    pen.nibAngle = angle;
    pen.dotLength = 1000;
    return pen;
}

CGE_OUTLINE WithThreads(CGE_OUTLINE pen, std::int32_t threadWidth) {
    CGE_DES9_WIDELINE wideline;
    wideline.threadWidth = threadWidth;
    wideline.SetNumberOfWidelineEntry(2);
    pen.SetToWideline(wideline);
    pen.SetVariableAttribute({{{0, 10, 20}, {1, 30, 40}}});
    return pen;
}

std::int32_t ThreadWidth(const CGE_OUTLINE& pen) {
    return dynamic_cast<const CGE_DES9_WIDELINE&>(*pen.GetWideline()).threadWidth;
}

CGE_OUTLINE Fit(CGE_OUTLINE pen, const MATRIX& m) {
    OUTPreAdjustPenWidth(pen, &m);
    return pen;
}

MATRIX Rotation(double degrees, double scale = 1) {
    const double c = scale * std::cos(degrees * kDegree), s = scale * std::sin(degrees * kDegree);
    return {c, s, -s, c, 7, -9};
}

MATRIX Nib(const CGE_OUTLINE& pen) {
    const MATRIX turn = Rotation(pen.nibAngle / 1e6);
    const double x = pen.nibStretch / 100.0 * pen.width, y = pen.width;
    return {turn.a * x, turn.b * x, turn.c * y, turn.d * y, 0, 0};
}

/// Singular values, and the direction that the larger one belongs to, from the sum of a turn and a mirror
/// image that every linear map is.
struct Ellipse {
    explicit Ellipse(const MATRIX& m) {
        const double turn = std::hypot(m.a + m.d, m.b - m.c) / 2,
                     mirror = std::hypot(m.a - m.d, m.b + m.c) / 2;
        longer = turn + mirror;
        shorter = std::abs(turn - mirror);
        degrees = (std::atan2(m.b - m.c, m.a + m.d) + std::atan2(m.b + m.c, m.a - m.d)) / 2 / kDegree;
    }
    double longer, shorter, degrees;
};

class PenWidth : public testing::Test {
protected:
    double Pick(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }
    int PickWhole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    CGE_OUTLINE PickPen() {
        return Pen(PickWhole(1, 2000000), PickWhole(1, 300), PickWhole(-90000000, 89999999));
    }

    std::mt19937 random{11};
};

TEST_F(PenWidth, TurnsAndUniformScalesKeepTheShape) {
    for (int round = 0; round < 2000; ++round) {
        const CGE_OUTLINE pen = Pen(PickWhole(1, 2000000), PickWhole(1, 100), PickWhole(-90000000, 89999999));
        const CGE_OUTLINE same = Fit(pen, {});
        ASSERT_EQ(0, OUTCompareOutlines(&pen, &same, false)) << round;

        const int degrees = PickWhole(-359, 359), scale = PickWhole(1, 900);
        const CGE_OUTLINE turned = Fit(pen, Rotation(degrees, scale));
        ASSERT_EQ(pen.width * scale, turned.width) << round;
        ASSERT_EQ(1000u * static_cast<unsigned>(scale), turned.dotLength) << round;
        ASSERT_EQ(pen.nibStretch, turned.nibStretch) << round;
        const int expected = (pen.nibAngle + degrees * 1000000 + 450000000) % 180000000 - 90000000;
        ASSERT_EQ(0, (turned.nibAngle - expected) % 180000000) << round << ", also for a round nib";
        ASSERT_TRUE(turned.nibAngle >= -90000000 && turned.nibAngle < 90000000) << round;
    }
}

TEST_F(PenWidth, KnownPens) {
    const auto expect = [](const CGE_OUTLINE& pen, std::int32_t width, int stretch, std::int32_t angle) {
        EXPECT_EQ(width, pen.width);
        EXPECT_EQ(stretch, pen.nibStretch);
        EXPECT_EQ(angle, pen.nibAngle);
    };
    expect(Fit(Pen(1000, 100, 0), {1, 0, 1, 1, 0, 0}), 1618, 38, -58282526);  // 1000 golden ratios
    expect(Fit(Pen(1000, 100, 0), {1, 0, 0, 3, 0, 0}), 3000, 33, 0);
    expect(Fit(Pen(1000, 100, 0), {3, 0, 0, 1, 0, 0}), 3000, 33, -90000000);
    expect(Fit(Pen(1000, 250, 0), {}), 2500, 40, -90000000);
    expect(Fit(Pen(5, 100, 0), {0.5, 0, 0, 0.5, 0, 0}), 3, 100, 0);
    expect(Fit(Pen(-1000, 50, 0), {}), 1000, 50, 0);
    expect(Fit(Pen(1000, 0, 30000000), {}), 1000, 100, 30000000);
    for (int width : {0, -1000})
        EXPECT_EQ(1000u, Fit(Pen(width, 50, 30), {5, 0, 0, 5, 0, 0}).dotLength) << "no measure of growth";
}

TEST_F(PenWidth, AxesAreThoseOfTheMappedNib) {
    for (int round = 0; round < 5000; ++round) {
        const CGE_OUTLINE pen = PickPen();
        const MATRIX m{Pick(-3, 3), Pick(-3, 3), Pick(-3, 3), Pick(-3, 3), Pick(-99, 99), 5};
        const CGE_OUTLINE fitted = Fit(pen, m);
        const Ellipse mapped(m * Nib(pen));
        ASSERT_NEAR(mapped.longer, fitted.width, 0.5001) << round;
        ASSERT_NEAR(1000 * mapped.longer / pen.width, fitted.dotLength, 0.5001) << round;
        const double stretch = 100 * mapped.shorter / mapped.longer;
        if (stretch < 0.5) continue;
        ASSERT_NEAR(stretch, fitted.nibStretch, 0.5001) << round;
        if (stretch >= 99) continue;  // the nearer to a circle, the less the axes can be told
        ASSERT_NEAR(0, std::remainder(mapped.degrees - 90 - fitted.nibAngle / 1e6, 180), 2e-6) << round;
    }
}

// Fields are whole numbers, so the nib that is stored after the first fit is off by a matrix of norm at most
// `error`: half a unit of width, half a per cent of it across, half a millionth of a degree. Going back, the
// axes of the nib change by no more than the inverse's largest stretch times that.
TEST_F(PenWidth, TheInverseUndoesTheFit) {
    int tried = 0;
    for (int round = 0; round < 5000; ++round) {
        const CGE_OUTLINE pen = PickPen();
        const MATRIX m{Pick(-3, 3), Pick(-3, 3), Pick(-3, 3), Pick(-3, 3), 0, 0};
        CGE_OUTLINE fitted = Fit(pen, m);
        const Ellipse mapped(m * Nib(pen)), before(Nib(pen));
        if (mapped.shorter < 0.005 * mapped.longer) continue;  // becomes round
        const auto inverse = Inverse(m);
        ASSERT_TRUE(inverse);
        OUTPostAdjustPenWidth(fitted, &*inverse);
        const double error = 0.005 * (mapped.longer + 0.5) + 0.5 + 1e-8 * mapped.longer;
        const double axisError = Ellipse(*inverse).longer * error + 1e-6;
        ASSERT_NEAR(before.longer, fitted.width, axisError + 0.5) << round;
        if (fitted.nibStretch == 100) continue;  // may stand for 0
        ASSERT_NEAR(before.shorter, fitted.nibStretch / 100.0 * fitted.width,
                    axisError + 0.005 * (fitted.width + 0.5) + 0.5)
            << round;
        ++tried;
    }
    EXPECT_GT(tried, 4000);
}

TEST_F(PenWidth, ThreadsAndVariableWidthsFollow) {
    const CGE_OUTLINE fitted = Fit(WithThreads(Pen(1000, 50, 0), 400), {1, 0, 0, 2.5, 0, 0});
    EXPECT_EQ(2500, fitted.width);
    EXPECT_EQ(1000, ThreadWidth(fitted));
    EXPECT_EQ(2500u, fitted.dotLength);
    EXPECT_EQ((CGE_VARIABLEATTRIB{{{0, 25, 50}, {1, 75, 100}}}), fitted.GetVariableAttribute());
    EXPECT_EQ(OutlineWideline, fitted.type);

    CGE_OUTLINE solid = WithThreads(Pen(1000, 50, 0), 400);
    solid.type = OutlineSolid;
    EXPECT_EQ(400, ThreadWidth(Fit(solid, {2, 0, 0, 2, 0, 0}))) << "not drawn in";
}

TEST_F(PenWidth, HostileMatrices) {
    const CGE_OUTLINE pen = WithThreads(Pen(1000, 50, 30000000), 400);
    for (const MATRIX& m : {MATRIX{std::nan(""), 0, 0, 1, 0, 0}, MATRIX{1, 0, kInfinity, 1, 0, 0},
                            MATRIX{1, 0, 0, 1, 0, -kInfinity}}) {
        const CGE_OUTLINE same = Fit(pen, m);
        EXPECT_EQ(0, OUTCompareOutlines(&pen, &same, false));
    }
    CGE_OUTLINE untouched = pen;
    OUTPreAdjustPenWidth(untouched, nullptr);
    OUTPostAdjustPenWidth(untouched, nullptr);
    EXPECT_EQ(0, OUTCompareOutlines(&pen, &untouched, false));

    for (double large : {1e7, 1e154, 1e300, std::numeric_limits<double>::max()}) {
        const CGE_OUTLINE fitted = Fit(pen, Rotation(90, large));
        EXPECT_EQ(kMax, fitted.width);
        EXPECT_EQ(kMax, ThreadWidth(fitted));
        EXPECT_EQ(kMax, fitted.dotLength) << "as long as the pen is wide, still";
        EXPECT_EQ(50, fitted.nibStretch);
        EXPECT_EQ(-60000000, fitted.nibAngle);
        EXPECT_DOUBLE_EQ(kMax / 100.0, fitted.GetVariableAttribute().points[0].left);
    }
    CGE_OUTLINE longDots = Pen(1, 100, 0);
    longDots.dotLength = 4000000000;
    EXPECT_EQ(std::numeric_limits<std::uint32_t>::max(), Fit(longDots, {2, 0, 0, 2, 0, 0}).dotLength);
    EXPECT_EQ(kMax, Fit(Pen(std::numeric_limits<std::int32_t>::min(), 32767, 5), {}).width);

    for (double small : {0.0, 5e-324, 1e-300}) {
        const CGE_OUTLINE fitted = Fit(pen, Rotation(0, small));
        EXPECT_EQ(0, fitted.width);
        EXPECT_EQ(0, ThreadWidth(fitted));
        EXPECT_EQ(0u, fitted.dotLength);
        EXPECT_EQ(small > 0 ? 50 : 100, fitted.nibStretch);
    }
    // Mapped to a line along 45 degrees.
    const CGE_OUTLINE flat = Fit(Pen(1000, 100, 0), {1, 1, 1, 1, 0, 0});
    EXPECT_EQ(2000, flat.width);
    EXPECT_EQ(100, flat.nibStretch);
    EXPECT_EQ(-45000000, flat.nibAngle);
}

TEST_F(PenWidth, RunningOutOfMemoryChangesNothing) {
    const CGE_OUTLINE before = WithThreads(Pen(1000, 50, 0), 400);
    CGE_OUTLINE pen = before;
    const MATRIX m{1, 0, 0, 2, 0, 0};
    EXPECT_NE(0u, testing_support::FailEachAllocation(
                      [&] { OUTPreAdjustPenWidth(pen, &m); },
                      [&] { ASSERT_EQ(0, OUTCompareOutlines(&before, &pen, false)); }));
    EXPECT_EQ(2000, pen.width);
}

}  // namespace
