#include "host/geometry/matrix.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using VyrMath::Compose;
using VyrMath::Decompose;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

void ExpectNear(const MATRIX& left, const MATRIX& right, double tolerance) {
    const double pairs[][2] = {{left.a, right.a}, {left.b, right.b},   {left.c, right.c},
                               {left.d, right.d}, {left.tx, right.tx}, {left.ty, right.ty}};
    for (const auto& pair : pairs)
        EXPECT_NEAR(pair[0], pair[1], tolerance);
}

class RandomMatrices : public ::testing::Test {
protected:
    MATRIX Next() {
        std::uniform_real_distribution<double> any(-10, 10);
        return {any(m_random), any(m_random), any(m_random), any(m_random), any(m_random), any(m_random)};
    }

private:
    std::mt19937 m_random{12345};
};

TEST_F(RandomMatrices, ProductAppliesTheRightOneFirst) {
    for (int i = 0; i < 100; ++i) {
        const MATRIX m = Next(), n = Next();
        const VECTOR2D direct = TransformPoint(m * n, {3, -4});
        const VECTOR2D steps = TransformPoint(m, TransformPoint(n, {3, -4}));
        EXPECT_NEAR(direct.x, steps.x, 1e-10);
        EXPECT_NEAR(direct.y, steps.y, 1e-10);
        EXPECT_NEAR(Determinant(m * n), Determinant(m) * Determinant(n), 1e-8);
    }
    EXPECT_EQ(TransformPoint({0, 1, -1, 0, 5, 6}, {2, 3}), (VECTOR2D{2, 8}));
    EXPECT_EQ(TransformVector({0, 1, -1, 0, 5, 6}, {2, 3}), (VECTOR2D{-3, 2}));
}

TEST_F(RandomMatrices, InverseUndoes) {
    for (int i = 0; i < 100; ++i) {
        const MATRIX m = Next();
        const auto inverse = Inverse(m);
        ASSERT_TRUE(inverse);
        ExpectNear(m * *inverse, {}, 1e-9);
    }
    EXPECT_EQ(Inverse({1e-200, 0, 0, 1e-200, 0, 0}), (MATRIX{1e200, 0, 0, 1e200, 0, 0}));
    EXPECT_FALSE(Inverse({1, 2, 2, 4, 0, 0}));
    EXPECT_FALSE(Inverse({0, 0, 0, 0, 1, 1}));
    EXPECT_FALSE(Inverse({kInfinity, 0, 0, 1, 0, 0}));
    EXPECT_FALSE(Inverse({1e-310, 0, 0, 1e-310, 0, 0}));
}

TEST_F(RandomMatrices, ComposeUndoesDecompose) {
    for (int i = 0; i < 1000; ++i) {
        const MATRIX m = Next();
        const auto parts = Decompose(m);
        EXPECT_GE(parts.xScale, 0);
        EXPECT_EQ(parts.yScale < 0, Determinant(m) < 0);
        ExpectNear(Compose(parts), m, 1e-9);
    }
}

TEST(MatrixParts, AreWhatTheyAreCalled) {
    const auto turned = Decompose(Compose({30, 0, 2, 3, 7, 8}));
    EXPECT_NEAR(turned.angle, 30, 1e-12);
    EXPECT_NEAR(turned.xScale, 2, 1e-12);
    EXPECT_NEAR(turned.yScale, 3, 1e-12);
    EXPECT_EQ(turned.xOffset, 7);
    const auto skewed = Decompose(MATRIX{1, 0, 1, 1, 0, 0});
    EXPECT_EQ(skewed.angle, 0);
    EXPECT_NEAR(skewed.skew, 45, 1e-12);
    const auto mirrored = Decompose(MATRIX{1, 0, 0, -1, 0, 0});
    EXPECT_EQ(mirrored.angle, 0);
    EXPECT_EQ(mirrored.yScale, -1);
    EXPECT_EQ(Compose({90, 0, 1, 1, 0, 0}), (MATRIX{0, 1, -1, 0, 0, 0}));
}

TEST(MatrixParts, SingularOnesKeepTheAngle) {
    const auto flat = Decompose(MATRIX{0, 0, -2, 0, 0, 0});
    EXPECT_EQ(flat.xScale, 0);
    EXPECT_EQ(flat.yScale, 2);
    EXPECT_NEAR(flat.angle, 90, 1e-12);
    const auto line = Decompose(MATRIX{3, 4, 0, 0, 0, 0});
    EXPECT_EQ(line.yScale, 0);
    EXPECT_EQ(line.xScale, 5);
    const auto nothing = Decompose(MATRIX{0, 0, 0, 0, 1, 2});
    EXPECT_EQ(nothing.xScale, 0);
    EXPECT_EQ(nothing.yScale, 0);
    EXPECT_EQ(Compose(nothing), (MATRIX{0, 0, 0, 0, 1, 2}));
}

TEST(MatrixHelpers, ActOnTheResult) {
    MATRIX m{1, 2, 3, 4, 5, 6};
    UTLStretchMatrix(m, 2, 3);
    EXPECT_EQ(m, (MATRIX{2, 6, 6, 12, 10, 18}));
    UTLRotateMatrix(m, 90e6);
    EXPECT_EQ(m, (MATRIX{-6, 2, -12, 6, -18, 10}));
    UTLRotateMatrix(m, -450e6);
    EXPECT_EQ(m, (MATRIX{2, 6, 6, 12, 10, 18}));
    UTLTranslateMatrix(m, 1, -1);
    EXPECT_EQ(m, (MATRIX{2, 6, 6, 12, 11, 17}));
    MATRIX quarter;
    UTLRotateMatrix(quarter, 30e6);
    EXPECT_NEAR(quarter.a, std::sqrt(0.75), 1e-15);
    EXPECT_NEAR(quarter.b, 0.5, 1e-15);
}

}  // namespace
