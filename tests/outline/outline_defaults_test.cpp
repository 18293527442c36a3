#include "fom/outline_defaults.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

#include "host/gfx/des9_wideline.h"

#include "fom/fill_defaults.h"
#include "fom/outline_handle.h"
#include "fom/outline_record.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"
#include "support/recording_services.h"

namespace {

class OutlineDefaults : public testing_support::LeakCheckedTest {
protected:
    // Arrowheads stay once they are used.
    static void SetUpTestSuite() { WOutlineHandle(1, 0ul, nullptr, 1, 2); }
    testing_support::RecordingServices services;
    testing_support::ServicesScope scope{services};
};

/// Every field set.
CGE_OUTLINE Used() {
    CGE_OUTLINE outline;
    outline.type = 0xFFF8;
    outline.endCaps = outline.join = outline.justification = 2;
    outline.width = outline.nibAngle = 99;
    outline.nibStretch = 5;
    outline.matrix = {2, 0, 0, 2, 1, 1};
    outline.color.MakeRGB(1, 2, 3);
    outline.screen.angle = 1;
    outline.overprint = 1;
    outline.dotDash = {2, {1, 1}};
    outline.dotLength = 7;
    outline.guid = VyrUtils::Guid({4});
    outline.SetMiterLimit(5);
    outline.SetWideline(std::make_unique<CGE_DES9_WIDELINE>());
    return outline;
}

TEST_F(OutlineDefaults, TwoSwitchesRoundCapsAndJoins) {
    for (unsigned switches = 0; switches < 4; ++switches) {
        services.switchesOn.clear();
        if (switches & 1) services.switchesOn.insert(L"OutlineEndCapDefaultRound");
        if (switches & 2) services.switchesOn.insert(L"OutlineJoinDefaultRound");
        CGE_OUTLINE expected;
        expected.type = OutlineSolid;
        expected.endCaps = (switches & 1) != 0;
        expected.join = (switches & 2) != 0;
        expected.width = 762;
        expected.color.MakeRGBBlack();
        CGE_OUTLINE rgb = Used(), cmyk = Used(), text = Used();
        OUTGetDefaultOutline(&rgb, 2);
        EXPECT_EQ(0, OUTCompareOutlines(&expected, &rgb, false)) << switches;
        EXPECT_EQ(Used().guid, rgb.guid);
        OUTGetDefaultTextOutline(&text, 1);
        expected.type = OutlineNone;
        EXPECT_EQ(0, OUTCompareOutlines(&expected, &text, false)) << switches;

        OUTSetDefaultOutline(&cmyk);
        expected.type = OutlineSolid;
        expected.color.MakeCMYKBlack();
        EXPECT_EQ(0, OUTCompareOutlines(&expected, &cmyk, false)) << switches;
        CGE_HATCHLINE line;
        line.pen = Used();
        FILLSetDefaultCGEHatchLine(&line);
        EXPECT_EQ(0, OUTCompareOutlines(&expected, &line.pen, false)) << switches;
    }
}

TEST_F(OutlineDefaults, WidelinesNeedBitAndObject) {
    CGE_OUTLINE outline = Used();
    EXPECT_EQ(1, OUTHasWideline(&outline));
    outline.type = OutlineSolid;
    EXPECT_EQ(0, OUTHasWideline(&outline));
    outline = CGE_OUTLINE();
    outline.type = OutlineWideline;
    EXPECT_EQ(0, OUTHasWideline(&outline));
    EXPECT_EQ(0, OUTHasWideline(nullptr));
    EXPECT_EQ(-1, OUTCompareOutlines(nullptr, &outline, false));
    EXPECT_EQ(1, OUTCompareOutlines(&outline, nullptr, false));
}

TEST_F(OutlineDefaults, PatternWidths) {
    services.unitLengths = {{host::kUnitInch, 254000.0}};
    EXPECT_EQ(590459576, OUTGetMaxPatternWidth());
    services.unitLengths = {{host::kUnitInch, 0.9}};
    EXPECT_EQ(2092, OUTGetMaxPatternWidth()) << "cut off, not rounded";
    services.unitLengths = {{host::kUnitInch, 1e12}};
    EXPECT_EQ(std::numeric_limits<int>::max(), OUTGetMaxPatternWidth());
}

TEST_F(OutlineDefaults, PatternLengthNeedsDashesWithCaps) {
    constexpr double kFallback = 52916.66666666667;
    CGE_OUTLINE dashed;
    dashed.type = 0xFFF4;
    dashed.endCaps = 1;
    dashed.width = 100000;
    dashed.dotDash = {3, {3, -1, 2}};
    EXPECT_EQ(400000, OUTEstimatePatternLength(&dashed));
    dashed.dotDash = {12, {}};
    dashed.dotDash.element.fill(std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(10 * 2147483647.0 * 100000, OUTEstimatePatternLength(&dashed));

    CGE_OUTLINE solid = dashed, butt = dashed, empty = dashed, negative = dashed;
    solid.type = OutlineSolid;
    butt.endCaps = 0;
    empty.dotDash.count = 0;
    negative.width = -5;
    for (CGE_OUTLINE* outline : {&solid, &butt, &empty, &negative, static_cast<CGE_OUTLINE*>(nullptr)})
        EXPECT_EQ(kFallback, OUTEstimatePatternLength(outline));
}

TEST_F(OutlineDefaults, HandlesOnTheDefault) {
    WRCOutlineList list;
    WOutlineHandle* made = nullptr;
    OUTGetDefaultOutline(&list, &made, 1);
    const std::unique_ptr<WOutlineHandle> handle(made);
    CGE_OUTLINE expected;
    OUTGetDefaultOutline(&expected, 1);
    EXPECT_EQ(0, OUTCompareOutlines(&expected, handle->GetCGEOutline(), false));
    EXPECT_EQ(1u, list.GetCount());
}

TEST_F(OutlineDefaults, PresetPens) {
    constexpr unsigned kWidths[] = {0, 762, 1764, 3528, 7056, 14111, 28222, 42333, 56444, 70556, 84667};
    WOutlineHandle* made = nullptr;
    SetPresetPen(&made, 11);
    SetPresetPen(&made, -1);
    SetPresetPen(nullptr, 1);
    ASSERT_EQ(nullptr, made);
    SetPresetPen(&made, 2);
    const std::unique_ptr<WOutlineHandle> owner(made);
    ASSERT_NE(nullptr, made);
    for (int n = 1; n <= 10; ++n) {
        made->SetNibAngle(5);
        made->SetNibStretch(50);
        SetPresetPen(&made, n);
        ASSERT_EQ(owner.get(), made);
        EXPECT_EQ(kWidths[n], made->GetWidth());
        EXPECT_EQ(100, made->GetNibStretch());
        EXPECT_EQ(0, made->GetNibAngle());
        EXPECT_EQ(OutlineSolid, made->GetCGEType());
    }
    CLR_COLORSPEC none, black, red;
    black.MakeCMYKBlack();
    red.MakeRGB(255, 0, 0);
    for (const CLR_COLORSPEC& color : {none, red}) {
        made->SetColorspec(&color);
        made->SetCGEType(OutlineDotDash);
        SetPresetPen(&made, 3);
        EXPECT_EQ(color == none ? black : red, *made->GetColorspec());
    }
    EXPECT_EQ(OutlineDotDash, made->GetCGEType());

    ASSERT_TRUE(made->SetLeftArrowStyle(1));
    ASSERT_TRUE(made->SetRightArrowStyle(2));
    const WOutlineHandle other(*made);
    const auto check = [&] { ASSERT_EQ(other.GetRefCountOutline(), made->GetRefCountOutline()); };
    EXPECT_NE(0u, testing_support::FailEachAllocation([&] { SetPresetPen(&made, 0); }, check));
    EXPECT_EQ(OutlineNone, made->GetCGEType());
    EXPECT_EQ(nullptr, made->GetCGEOutline()->leftArrow);
    EXPECT_EQ(nullptr, made->GetCGEOutline()->rightArrow);
}

}  // namespace
