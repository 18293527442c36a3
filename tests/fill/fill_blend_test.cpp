#include "fom/fill_blend.h"

#include <cmath>
#include <gtest/gtest.h>
#include <optional>

#include "host/base/temp_data.h"
#include "host/engines/texture_parameters.h"

#include "support/leak_check.h"

namespace {

const ColorContext kContext = ColorContext::Uncalibrated();

CLR_FOUNTCOLOR Stop(std::uint16_t position, int red) {
    CLR_FOUNTCOLOR stop;
    stop.position = position;
    stop.color.MakeRGB(red, 0, 0);
    return stop;
}

CGE_FOUNTAINFILL Fountain(CLR_FOUNTCOLOR_ARRAY stops) {
    CGE_FOUNTAINFILL fountain;
    fountain.SetColors(std::move(stops));
    return fountain;
}

/// The colour half-way.
std::optional<CLR_COLORSPEC> Middle(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) {
    CGE_FOUNTAINFILL out;
    if (!BlendFountainFill(kContext, out, Fountain({{0, 0, a}}), Fountain({{0, 0, b}}), 0.5)) return {};
    return out.GetColor(0).color;
}

TEST(FillBlend, NumbersRoundHalfAwayFromZero) {
    CGE_FOUNTAINFILL a = Fountain({Stop(0, 10)}), b = Fountain({Stop(0, 15)}), out;
    b.SetAngle(-3);
    b.SetCenterOffset(1, -1);
    b.SetMatrix({3, 0, 0, 1, 0.5, 0});
    b.SetAnisotropic(true);
    ASSERT_TRUE(BlendFountainFill(kContext, out, a, b, 0.5));
    EXPECT_EQ(-2, out.GetAngle());
    EXPECT_EQ(1, out.GetCenterOffsetX());
    EXPECT_EQ(-1, out.GetCenterOffsetY());
    EXPECT_EQ((MATRIX{2, 0, 0, 1, 0.25, 0}), out.GetMatrix());
    EXPECT_EQ(13, out.GetColor(0).color.GetComponent(0));
    EXPECT_TRUE(out.GetAnisotropic());
}

TEST(FillBlend, StopsStandWhereverEitherHasOne) {
    const CGE_FOUNTAINFILL a = Fountain({Stop(0, 0), Stop(50, 200), Stop(50, 100), Stop(100, 0)});
    const CGE_FOUNTAINFILL b = Fountain({Stop(20, 10), Stop(70, 60)});
    CGE_FOUNTAINFILL out = a;
    ASSERT_TRUE(BlendFountainFill(kContext, out, out, b, 0.5));
    const CLR_FOUNTCOLOR_ARRAY expected{Stop(0, 5),   Stop(20, 45), Stop(50, 120),
                                        Stop(50, 70), Stop(70, 60), Stop(100, 30)};
    EXPECT_EQ(expected, out.GetColors());
    out = b;
    ASSERT_TRUE(BlendFountainFill(kContext, out, a, out, 7.0));
    EXPECT_EQ(0, out.CompareTo(b));
    ASSERT_TRUE(BlendFountainFill(kContext, out, a, b, -1));
    EXPECT_EQ(0, out.CompareTo(a));
}

TEST(FillBlend, ColoursBlendInTheFirstOnesModel) {
    CLR_COLORSPEC a, b, expected;
    b.MakeGray(100);
    a.MakeRGB(0, 0, 0), expected.MakeRGB(50, 50, 50);
    EXPECT_EQ(expected, Middle(a, b));
    a.MakeHSB(350, 100, 100), b.MakeHSB(20, 100, 100), expected.MakeHSB(5, 100, 100);
    EXPECT_EQ(expected, Middle(a, b)) << "the shorter way round";
    a.MakeLAB(50, -10, 10), b.MakeLAB(50, 10, -20), expected.MakeLAB(50, 0, -5);
    EXPECT_EQ(expected, Middle(a, b));
    a.MakeHexachrome({0, 80, 0, 0, 0, 0}, 100), b.MakeHexachrome({40, 0, 0, 0, 0, 0}, 100);
    expected.MakeHexachrome({20, 40, 0, 0, 0, 0}, 100);
    EXPECT_EQ(expected, Middle(a, b));
    a.MakeSpot(4, 100), b.MakeSpot(4, 50), expected.MakeSpot(4, 75);
    EXPECT_EQ(expected, Middle(a, b));
    b.MakeSpot(5, 50);
    EXPECT_EQ(std::nullopt, Middle(a, b));
}

TEST(FillBlend, WhatDoesNotMatchIsLeftAlone) {
    const CGE_FOUNTAINFILL a = Fountain({Stop(0, 1)}), before = Fountain({Stop(3, 3)});
    CGE_FOUNTAINFILL radial = a, repeated = a, out = before;
    radial.SetFountainType(FountainRadial);
    repeated.SetSpreadMethod(SpreadRepeat);
    for (const CGE_FOUNTAINFILL& b : {radial, repeated, CGE_FOUNTAINFILL()})
        EXPECT_FALSE(BlendFountainFill(kContext, out, a, b, 0.5));
    EXPECT_FALSE(BlendFountainFill(kContext, out, a, a, std::nan("")));
    EXPECT_EQ(0, out.CompareTo(before));
}

CGE_TEXTUREFILL Texture(std::int32_t width, std::uint16_t scale) {
    CGE_TEXTUREFILL fill;
    fill.tiling.width = width;
    fill.info.present = 1;
    host::TextureParameters parameters;
    parameters.scale = scale;
    fill.info.parameters = host::EncodeTextureParameters(parameters);
    return fill;
}

TEST(FillBlend, TexturesBlendByTheirParameters) {
    const testing_support::LeakCheck leaks;
    CGE_TEXTUREFILL a = Texture(100, 100), b = Texture(-1, 401), out;
    a.tmpFile = TMPRegisterPrivateData(nullptr);
    ASSERT_TRUE(BlendTextureFill(out, a, b, 0.25));
    EXPECT_EQ(75, out.tiling.width);
    EXPECT_EQ(175, host::DecodeTextureParameters(out.info.parameters)->scale);
    EXPECT_EQ(0u, out.tmpFile) << "rendered from other parameters";
    b.info.parameters = a.info.parameters;
    ASSERT_TRUE(BlendTextureFill(out, a, b, 0.25));
    EXPECT_NE(0u, out.tmpFile);
    b.info.parameters.fill(9);
    ASSERT_TRUE(BlendTextureFill(out, a, b, 0.75));
    EXPECT_EQ(b.info.parameters, out.info.parameters);
    b.info.texture.Set(L"Marble");
    EXPECT_FALSE(BlendTextureFill(out, a, b, 0.5));
}

}  // namespace
