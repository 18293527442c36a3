#include "fom/line_pattern_preset.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "fom/outline_record.h"

#include "support/alloc_faults.h"

namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

CGE_DES9_WIDELINE Wideline(std::int32_t threadWidth, std::int32_t divisions) {
    CGE_DES9_WIDELINE wideline;
    wideline.threadWidth = threadWidth;
    wideline.divisions = divisions;
    return wideline;
}

CGE_OUTLINE Outline(unsigned type) {
    CGE_OUTLINE outline;
    outline.type = static_cast<std::uint16_t>(type);
    outline.width = 10000;
    outline.endCaps = 1;
    return outline;
}

std::int32_t ThreadWidth(const CGE_OUTLINE& outline) {
    return dynamic_cast<const CGE_DES9_WIDELINE&>(*outline.GetWideline()).threadWidth;
}

struct NameKind : CLinePatternPresetVisitor {
    void VisitStdPattern(CStdLinePatternPreset&) override { name = "dashes"; }
    void VisitEnhPattern(CEnhLinePatternPreset&) override { name = "threads"; }
    void VisitSolidPattern(CSolidLinePatternPreset&) override { name = "solid"; }
    std::string name;
};

TEST(LinePatternPreset, OutlinesBecomePresetsAndBack) {
    CGE_OUTLINE solid = Outline(2), dashed = Outline(0x14), threaded = Outline(1);
    dashed.dotDash = {2, {3, 1}};
    dashed.dotLength = 5;
    threaded.SetToWideline(Wideline(70, 9));
    const CGE_OUTLINE* const outlines[] = {&solid, &dashed, &threaded};
    const char* const names[] = {"solid", "dashes", "threads"};
    std::unique_ptr<CLinePatternPreset> presets[3];
    for (int i = 0; i < 3; ++i) {
        presets[i].reset(OUTCreatePatternPreset(*outlines[i]));
        NameKind visitor;
        presets[i]->Accept(visitor);
        EXPECT_EQ(names[i], visitor.name);
        EXPECT_TRUE(presets[i]->IsValid());
    }
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            EXPECT_EQ(i == j, *presets[i] == *presets[j]);
            EXPECT_EQ(i == j, *presets[i] == *outlines[j]);
        }
        CGE_OUTLINE applied = Outline(0x11);
        applied.dotLength = 5;
        presets[i]->ApplyTo(applied);
        EXPECT_TRUE(*presets[i] == applied);
        EXPECT_EQ((outlines[i]->type & 15) | 0x10, applied.type);
    }
    CSolidLinePatternPreset().ApplyTo(threaded);
    EXPECT_EQ(OutlineSolid, threaded.type);
    EXPECT_NE(nullptr, threaded.GetWideline());
}

TEST(LinePatternPreset, WhatPresetsCompare) {
    // Under their own classes, which is for the compiler to accept.
    const CStdLinePatternPreset twelve({12, {1}}), thirteen({13, {1}}), shorter({2, {1, 1, 5}});
    EXPECT_FALSE(twelve == thirteen) << "the whole count";
    EXPECT_TRUE(shorter == CStdLinePatternPreset({2, {1, 1, 6}}));
    EXPECT_TRUE(shorter != CStdLinePatternPreset({2, {1, 2}}));
    EXPECT_FALSE(twelve.IsValid());
    CGE_OUTLINE outline = Outline(OutlineSolid);
    outline.dotDash = {2, {1, 1}};
    EXPECT_TRUE(shorter == outline) << "whatever the kind";

    const CEnhLinePatternPreset enhanced(Wideline(70, 9));
    EXPECT_FALSE(enhanced == CEnhLinePatternPreset(Wideline(71, 9)));
    EXPECT_FALSE(enhanced == shorter);
    EXPECT_TRUE(static_cast<const CLinePatternPreset&>(shorter) == shorter);
    outline.SetToWideline(Wideline(71, 9));
    EXPECT_TRUE(enhanced == outline) << "whatever the thread width";
    outline.SetToWideline(Wideline(70, 8));
    EXPECT_FALSE(enhanced == outline);
}

TEST(LinePatternPreset, DashesFindTheirDotLength) {
    const auto dotLength = [](CGE_DOTDASHSPEC pattern, std::int32_t width, std::uint32_t old = 0) {
        CGE_OUTLINE outline = Outline(OutlineSolid);
        outline.width = width;
        outline.dotLength = old;
        CStdLinePatternPreset(pattern).ApplyTo(outline);
        EXPECT_EQ(pattern, outline.dotDash);
        return outline.dotLength;
    };
    EXPECT_EQ(10000u, dotLength({2, {4, 2}}, 10000));
    EXPECT_EQ(7u, dotLength({2, {4, 2}}, 10000, 7)) << "one that is there stays";
    EXPECT_EQ(7559u, dotLength({2, {5, 2}}, 1)) << "52917 / 7, cut off";
    EXPECT_EQ(0u, dotLength({0, {5, 2}}, 10000));
    EXPECT_EQ(0u, dotLength({2, {2, -2}}, 10000));
    EXPECT_EQ(0u, dotLength({2, {2, -3}}, 10000)) << "no negative length";
    EXPECT_EQ(static_cast<unsigned>(kMax), dotLength({1, {1}}, kMax));
    EXPECT_EQ(429496729u, dotLength({12, {kMax, kMax, kMax, kMax, kMax, kMax, kMax, kMax, kMax, kMax}}, kMax))
        << "the pattern's length stops at 64 bits";
}

TEST(LinePatternPreset, ThreadsKeepTheirWidth) {
    const CEnhLinePatternPreset preset(Wideline(70, 9));
    CGE_OUTLINE outline = Outline(OutlineSolid);
    preset.ApplyTo(outline);
    EXPECT_EQ(70, ThreadWidth(outline));
    outline.SetToWideline(Wideline(500, 3));
    const CGE_OUTLINE before = outline;
    EXPECT_NE(0u, testing_support::FailEachAllocation(
                      [&] { preset.ApplyTo(outline); },
                      [&] { ASSERT_EQ(0, OUTCompareOutlines(&before, &outline, false)); }));
    EXPECT_EQ(500, ThreadWidth(outline));
    EXPECT_TRUE(preset == outline);

    CLinePatternPreset* made = nullptr;
    testing_support::FailEachAllocation([&] { made = OUTCreatePatternPreset(outline); },
                                        [&] { ASSERT_EQ(nullptr, made); });
    delete made;
}

}  // namespace
