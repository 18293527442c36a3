#include "fom/outline_blend.h"

#include <cmath>
#include <gtest/gtest.h>

#include "fom/outline_record.h"

namespace {

const ColorContext kContext = ColorContext::Uncalibrated();

CGE_OUTLINE Stroke(std::int32_t width, int red) {
    CGE_OUTLINE outline;
    outline.type = OutlineSolid;
    outline.width = width;
    outline.color.MakeRGB(red, 0, 0);
    return outline;
}

CGE_OUTLINE Blend(const CGE_OUTLINE& a, const CGE_OUTLINE& b, double factor) {
    CGE_OUTLINE out;
    EXPECT_TRUE(BlendOutline(kContext, out, a, b, factor));
    return out;
}

TEST(OutlineBlend, NumbersRunStraightTheRestComesFromTheNearerEnd) {
    CGE_OUTLINE a = Stroke(100, 0), b = Stroke(201, 100);
    a.nibStretch = 50;
    b.nibAngle = -4000000;
    b.dotLength = 4000000000;
    b.SetMiterLimit(8);
    b.matrix = {3, 0, 0, 1, 10, 0};
    b.SetProjectMatrix({1, 0, 0, 5, 0, 0});
    a.dotDash = {2, {1, 10}};
    b.dotDash = {2, {5, 20}};
    a.SetVariableAttribute({{{0, 1, 2}}});
    b.SetVariableAttribute({{{1, 3, 8}}});
    b.type = OutlineDotDash;
    b.endCaps = 1;
    a.guid = VyrUtils::Guid({1});

    CGE_OUTLINE expected = Stroke(151, 50);
    expected.nibStretch = 75;
    expected.nibAngle = -2000000;
    expected.dotLength = 2000000000;
    expected.SetMiterLimit(4);
    expected.matrix = {2, 0, 0, 1, 5, 0};
    expected.SetProjectMatrix({1, 0, 0, 3, 0, 0});
    expected.dotDash = {2, {3, 15}};
    expected.SetVariableAttribute({{{0.5, 2, 5}}});
    expected.type = OutlineDotDash;
    expected.endCaps = 1;
    CGE_OUTLINE out = a;
    ASSERT_TRUE(BlendOutline(kContext, out, out, b, 0.5));
    EXPECT_EQ(0, OUTCompareOutlines(&expected, &out, false));
    EXPECT_EQ(a.guid, out.guid);

    b.dotDash.count = 4;
    b.SetVariableAttribute({});
    EXPECT_EQ(a.dotDash, Blend(a, b, 0.25).dotDash);
    EXPECT_EQ(a.GetVariableAttribute(), Blend(a, b, 0.25).GetVariableAttribute());
    EXPECT_EQ(b.dotDash, Blend(a, b, 0.75).dotDash);
    out = Blend(a, b, -3);
    EXPECT_EQ(0, OUTCompareOutlines(&a, &out, false));
    out = Blend(a, b, 1e300);
    EXPECT_EQ(0, OUTCompareOutlines(&b, &out, false));
}

TEST(OutlineBlend, NoOutlineIsAStrokeWithoutWidth) {
    CGE_OUTLINE stroke = Stroke(100, 200), none;
    stroke.nibStretch = 40;
    stroke.SetVariableAttribute({{{0, 8, 4}}});
    CGE_OUTLINE expected = stroke;
    expected.width = 25;
    expected.SetVariableAttribute({{{0, 2, 1}}});
    CGE_OUTLINE out = Blend(none, stroke, 0.25);
    EXPECT_EQ(0, OUTCompareOutlines(&expected, &out, false));
    out = Blend(stroke, none, 0.75);
    EXPECT_EQ(0, OUTCompareOutlines(&expected, &out, false));
    out = Blend(stroke, none, 1);
    EXPECT_EQ(0, OUTCompareOutlines(&none, &out, false));
    EXPECT_EQ(OutlineNone, Blend(none, none, 0.5).type);
}

TEST(OutlineBlend, WhatDoesNotBlendIsLeftAlone) {
    const CGE_OUTLINE a = Stroke(1, 1), before = Stroke(9, 9);
    CGE_OUTLINE spot = a, out = before;
    spot.color.MakeSpot(4, 100);
    EXPECT_FALSE(BlendOutline(kContext, out, spot, a, 0.5));
    EXPECT_FALSE(BlendOutline(kContext, out, a, a, std::nan("")));
    EXPECT_EQ(0, OUTCompareOutlines(&before, &out, false));
}

}  // namespace
