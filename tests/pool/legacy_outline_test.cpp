#include <gtest/gtest.h>

#include "host/gfx/des9_wideline.h"

#include "fom/legacy_records.h"

#include "pool/legacy_bytes.h"
#include "support/golden.h"

namespace {

using legacy_test::FakeRemapper;

const ColorSystem::ColorContext kContext = ColorSystem::ColorContext::Uncalibrated();
const HMEM kLeft = reinterpret_cast<HMEM>(std::uintptr_t{64});
const HMEM kRight = reinterpret_cast<HMEM>(std::uintptr_t{128});

class LegacyOutlineTest : public ::testing::Test {
protected:
    LegacyOutlineTest() {
        m_remapper.known[{0x0504, udi::kPtrBlock}] = kLeft;
        m_remapper.known[{0x0706, udi::kPtrBlock}] = kRight;
    }
    CGE_OUTLINE_12xx ToLegacy(CGE_OUTLINE outline) {
        CGE_OUTLINE_12xx legacy;
        legacy.bytes.fill(0xEE);
        EXPECT_TRUE(FOMIO12Conv::ConvertCGE_OUTLINE(false, outline, legacy, kContext, m_remapper));
        return legacy;
    }
    CGE_OUTLINE ToCurrent(CGE_OUTLINE_12xx legacy, CGE_OUTLINE outline = CGE_OUTLINE()) {
        EXPECT_TRUE(FOMIO12Conv::ConvertCGE_OUTLINE(true, outline, legacy, kContext, m_remapper));
        return outline;
    }

    FakeRemapper m_remapper;
};

/// Every field that has a place, and no other.
CGE_OUTLINE Sample() {
    CGE_OUTLINE outline;
    outline.type = OutlineDotDash | 0x8030;
    outline.endCaps = 1;
    outline.join = 2;
    outline.justification = 3;
    outline.width = 762;
    outline.nibStretch = -4;
    outline.nibAngle = -5;
    outline.matrix = {1, -2, 0.5, 1, 0, -0.0};
    outline.color.MakeRGB(1, 2, 3);
    outline.screen = {0x0201, 0, 1, -2, 0x0A0B};
    outline.overprint = 1;
    outline.dotDash = {4, {1, -2, 3, 4, 0, 0, 0, 0, 0, 10}};
    outline.leftArrow = kLeft;
    outline.rightArrow = kRight;
    outline.dotLength = 0x01020304;
    outline.SetMiterLimit(-6);
    outline.SetDashAdjust(CGE_DASH_ADJUST{-7});
    return outline;
}

TEST_F(LegacyOutlineTest, Bytes) {
    const auto golden = testing_support::ReadGolden("legacy_records.txt").at("outline");
    const CGE_OUTLINE_12xx legacy = ToLegacy(Sample());
    EXPECT_EQ(std::vector(legacy.bytes.begin(), legacy.bytes.end()), golden);
    CGE_OUTLINE stale = Sample();
    stale.SetWideline(std::make_unique<CGE_DES9_WIDELINE>());
    stale.SetLeftArrowAttributes({1, 2, 3, 4, 5, 6});
    stale.guid = VyrUtils::Guid::Generate();
    const CGE_OUTLINE loaded = ToCurrent(legacy, stale);
    EXPECT_EQ(CGE_OUTLINE::CompareTo(loaded, Sample(), false), 0);
    EXPECT_EQ(loaded.guid, stale.guid);
}

TEST_F(LegacyOutlineTest, AnyStrokeSurvives) {
    std::mt19937 random(23);
    for (int i = 0; i < 2000; ++i) {
        CGE_OUTLINE_12xx legacy;
        legacy_test::FillRandom(legacy.bytes, random);
        legacy.bytes[0] &= 0xF7;
        if ((legacy.bytes[0] & 15) == 1) legacy.bytes[0] = 2;
        std::fill_n(legacy.bytes.begin() + 104, 8, std::uint8_t{0});
        EXPECT_EQ(ToLegacy(ToCurrent(legacy)).bytes, legacy.bytes);
    }
}

TEST_F(LegacyOutlineTest, NoOutline) {
    CGE_OUTLINE none = Sample();
    none.type = OutlineNone | 16;
    CGE_OUTLINE_12xx expected;
    expected.bytes[0] = 1;
    EXPECT_EQ(ToLegacy(none).bytes, expected.bytes);
    EXPECT_EQ(CGE_OUTLINE::CompareTo(ToCurrent(expected, Sample()), CGE_OUTLINE(), false), 0);
    CGE_OUTLINE_12xx marked = ToLegacy(Sample());
    marked.bytes[0] = 0x31;
    CGE_OUTLINE loaded = ToCurrent(marked, Sample());
    EXPECT_TRUE(loaded.leftArrow == kLeft && loaded.rightArrow == kRight) << "their blocks follow";
    loaded.leftArrow = loaded.rightArrow = nullptr;
    EXPECT_EQ(CGE_OUTLINE::CompareTo(loaded, CGE_OUTLINE(), false), 0);
}

TEST_F(LegacyOutlineTest, WidelinesBecomeSolid) {
    CGE_OUTLINE wide = Sample();
    wide.SetToWideline(CGE_DES9_WIDELINE());
    CGE_OUTLINE solid = Sample();
    solid.type = OutlineSolid | 0x8030;
    const CGE_OUTLINE_12xx legacy = ToLegacy(wide);
    EXPECT_EQ(legacy.bytes, ToLegacy(solid).bytes);
    CGE_OUTLINE_12xx hostile = legacy;
    hostile.bytes[0] |= OutlineWideline;
    EXPECT_EQ(CGE_OUTLINE::CompareTo(ToCurrent(hostile), solid, false), 0);
}

TEST_F(LegacyOutlineTest, NarrowFieldsSaturate) {
    CGE_OUTLINE outline = Sample();
    outline.overprint = 0x10000;
    outline.dotDash.element[0] = 100000;
    outline.SetDashAdjust(CGE_DASH_ADJUST{-100000});
    const CGE_OUTLINE loaded = ToCurrent(ToLegacy(outline));
    EXPECT_EQ(loaded.overprint, 0xFFFFu);
    EXPECT_EQ(loaded.dotDash.element[0], 32767);
    EXPECT_EQ(loaded.GetDashAdjust(), -32768);
}

TEST_F(LegacyOutlineTest, WhatTheRemapperThrowsPasses) {
    for (const bool toCurrent : {true, false}) {
        CGE_OUTLINE outline = Sample();
        CGE_OUTLINE_12xx legacy = ToLegacy(outline);
        m_remapper.throwAfter = 1;
        EXPECT_THROW(FOMIO12Conv::ConvertCGE_OUTLINE(toCurrent, outline, legacy, kContext, m_remapper),
                     FakeRemapper::Refused);
        m_remapper.throwAfter = -1;
    }
}

}  // namespace
