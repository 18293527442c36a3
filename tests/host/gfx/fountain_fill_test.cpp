#include "host/gfx/fountain_fill.h"

#include <cmath>
#include <limits>

#include "host/color/convert.h"

#include "record_probe.h"

namespace {

using gfx_test::HashOf;
using VyrMath::BoundsT;

CGE_FOUNTAINFILL TwoColors() {
    CGE_FOUNTAINFILL fill;
    fill.SetNumColors(2);
    CLR_COLORSPEC color;
    color.MakeRGB(200, 30, 60);
    fill.SetColor(0, CLR_FOUNTCOLOR{0, 0, color});
    color.MakeCMYK(10, 20, 30, 40);
    fill.SetColor(1, CLR_FOUNTCOLOR{128, 100, color});
    return fill;
}

int Compare(const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b) {
    return a.CompareTo(b);
}

TEST(FountainFill, EveryByteTakesPartInComparisonAndHash) {
    const CGE_FOUNTAINFILL fill = TwoColors();
    CGE_FOUNTAINFILL other(fill);
    EXPECT_EQ(fill.CompareTo(other), 0);
    EXPECT_EQ(HashOf(fill), HashOf(other));

    std::vector<bool> own = gfx_test::WrittenBytes<CGE_FOUNTAINFILL>();
    const auto stops = reinterpret_cast<const unsigned char*>(&fill.GetColors());
    gfx_test::Exclude(own, static_cast<std::size_t>(stops - reinterpret_cast<const unsigned char*>(&fill)),
                      sizeof(CLR_FOUNTCOLOR_ARRAY));
    const auto expectDifferent = [&] { gfx_test::ExpectDifferent(fill, other, Compare); };
    gfx_test::ForEachChange(other, own, expectDifferent);
    CLR_FOUNTCOLOR stop = fill.GetColor(1);
    gfx_test::ForEachChange(stop, std::vector<bool>(sizeof stop, true), [&] {
        other.SetColor(1, stop);
        expectDifferent();
    });
    other = fill;
    other.SetNumColors(3);
    expectDifferent();
}

TEST(FountainFill, OrderIsTotalAlsoOverOddNumbers) {
    std::mt19937 random(7);
    const double odd[] = {0.0, -0.0, 1.5, -1.5, std::nan(""), std::numeric_limits<double>::infinity()};
    std::vector<CGE_FOUNTAINFILL> fills(120);
    for (CGE_FOUNTAINFILL& fill : fills) {
        fill.SetNumColors(static_cast<std::uint16_t>(random() % 2));
        fill.SetCenterOffset(static_cast<std::int32_t>(random() % 3) - 1, 0);
        fill.SetBlendRateAcceleration(odd[random() % 6]);
        if (random() % 2) fill.SetOrigin({odd[random() % 6], 0});
    }
    gfx_test::ExpectTotalOrder(fills, Compare);
    CGE_FOUNTAINFILL zero, minusZero;
    minusZero.SetBlendRateAcceleration(-0.0);
    EXPECT_NE(zero.CompareTo(minusZero), 0);
}

TEST(FountainFill, StopsStayWithinTheirNumber) {
    CGE_FOUNTAINFILL fill = TwoColors();
    EXPECT_FALSE(fill.SetColor(2, CLR_COLORSPEC()) || fill.SetColor(2, CLR_FOUNTCOLOR()));
    EXPECT_EQ(fill.GetColor(2), CLR_FOUNTCOLOR());
    EXPECT_TRUE(fill.SetColor(1, fill.GetColor(0).color));
    EXPECT_EQ(fill.GetColor(1), (CLR_FOUNTCOLOR{128, 100, fill.GetColor(0).color}));
    fill.SetColors(CLR_FOUNTCOLOR_ARRAY(65537));
    EXPECT_EQ(fill.GetNumColors(), 65535);
}

void ExpectPoint(const MATRIX& m, VECTOR2D from, VECTOR2D to, double within = 1e-9) {
    const VECTOR2D at = TransformPoint(m, from);
    EXPECT_NEAR(at.x, to.x, within);
    EXPECT_NEAR(at.y, to.y, within);
}

TEST(FountainFill, TotalMatrixAppliesMatrixThenAngleThenOffsets) {
    const BoundsT<double> box{100, 50, 300, 150};
    CGE_FOUNTAINFILL fill;
    ExpectPoint(fill.GetTotalMatrix(box), {0, 0}, {100, 50});
    ExpectPoint(fill.GetTotalMatrix(box), {1, 1}, {300, 150});
    fill.SetMatrix({0.5, 0, 0, 0.5, 0.5, 0.5});
    fill.SetAngle(90000000);
    ExpectPoint(fill.GetTotalMatrix(box), {0, 0}, {200, 100});
    ExpectPoint(fill.GetTotalMatrix(box), {1, 0}, {200, 200});
    fill.SetCenterOffset(10, -20);
    ExpectPoint(fill.GetTotalMatrix(box), {1, 0}, {220, 180});
    fill.SetUnits(FountainWorldCoordinates);
    fill.SetAngle(0);
    ExpectPoint(fill.GetTotalMatrix(box), {1, 0}, {21, -19.5});
}

TEST(FountainFill, ParametersComeBack) {
    std::mt19937 random(11);
    const auto number = [&](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    for (int i = 0; i < 500; ++i) {
        CGE_FOUNTAINFILL fill;
        fill.SetUnits(i % 2 ? FountainObjectBounds : FountainWorldCoordinates);
        fill.SetAngle(static_cast<std::int32_t>(number(-4e8, 4e8)));
        fill.SetCenterOffset(i % 100, -i % 50);
        fill.SetMatrix(
            {number(0.1, 2), number(-1, 0), number(0.1, 1), number(0.1, 2), number(-5, 5), number(-5, 5)});
        const BoundsT<double> box{number(-1e6, 0), number(1, 1e6), number(1, 1e6), number(-1e6, 0)};
        const CGE_FOUNTAINFILL::Parameters before = fill.GetParameters(box);
        const VECTOR2D was = TransformPoint(fill.GetTotalMatrix(box), {1, -1});
        fill.SetParameters(before, box);
        EXPECT_EQ(fill.GetAngle() | fill.GetCenterOffsetX() | fill.GetCenterOffsetY(), 0);
        for (int p = 0; p < 6; ++p)
            EXPECT_NEAR(fill.GetParameters(box).value[p], before.value[p], 1e-6) << p;
        ExpectPoint(fill.GetTotalMatrix(box), {1, -1}, was, 1e-6);

        const CGE_FOUNTAINFILL kept(fill);
        fill.SetParameters({{0, 0, std::nan(""), 1, 0, 0}}, box);
        if (fill.GetUnits() == FountainObjectBounds)
            fill.SetParameters({{0, 0, 1, 1, 0, 0}}, {10, 10, 10, 20});
        EXPECT_EQ(fill.CompareTo(kept), 0);
    }
}

TEST(FountainFill, OpacityBecomesGray) {
    CGE_FOUNTAINFILL fill = TwoColors();
    EXPECT_TRUE(fill.IsTransparent());
    const CGE_FOUNTAINFILL mask = fill.CreateFountainFillFromOpacity();
    EXPECT_FALSE(mask.IsTransparent());
    CLR_COLORSPEC opaque, half;
    opaque.MakeGray(255);
    half.MakeGray(127);
    EXPECT_EQ(mask.GetColors(), (CLR_FOUNTCOLOR_ARRAY{{0, 0, opaque}, {0, 100, half}}));
}

TEST(FountainFill, ProofKeepsModelsAndInks) {
    const ColorContext proof = ColorContext::Uncalibrated();
    CGE_FOUNTAINFILL fill = TwoColors();
    CLR_COLORSPEC spot;
    spot.MakeSpot(7, 50);
    fill.SetColor(1, spot);
    CLR_COLORSPEC inks, shown;
    ASSERT_TRUE(WClrConvert::ConvertColorSpec(proof, inks, ClrModel::CMYK, fill.GetColor(0).color));
    ASSERT_TRUE(WClrConvert::ConvertColorSpec(proof, shown, ClrModel::RGB, inks));
    const CGE_FOUNTAINFILL proofed = fill.CreateFountainFillUsingProofSettings(proof);
    EXPECT_EQ(proofed.GetColor(0).color, shown);
    EXPECT_NE(proofed.GetColor(0).color, fill.GetColor(0).color)
        << "per cents of ink cannot give 200, 30, 60";
    EXPECT_EQ(proofed.GetColor(1), fill.GetColor(1));
}

}  // namespace
