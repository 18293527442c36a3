#include "fom/fill_flags.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

CLR_FOUNTCOLOR Stop(std::uint16_t transparency, std::uint16_t position) {
    return {transparency, position, {}};
}

TEST(FillFlags, BitsAreTakenModulo32) {
    WFillFlags flags;
    flags.setParam(33, 5);
    EXPECT_EQ(flags.GetBits(), 2u);
    EXPECT_TRUE(flags.getParam(65));
    EXPECT_TRUE(flags.isDirty());
    flags.setParam(1, 0);
    flags.ok();
    EXPECT_TRUE(flags.isOk());
    EXPECT_FALSE(flags.isDirty());
    flags.on();
    flags.cancel();
    EXPECT_EQ(flags.GetBits(), 0x7FFFFFFFu);
}

TEST(FillFlags, SetWorksForKindsInUseOnly) {
    for (unsigned kind = 0; kind < 20; ++kind) {
        const bool used = kind == 1 || kind == 2 || (kind >= 6 && kind <= 12);
        WFillFlags flags;
        flags.Set(static_cast<CgeFillType>(kind), true);
        EXPECT_EQ(flags.GetBits(), used ? 0xFFFFFFFFu : 0u) << kind;
        flags.on();
        flags.Set(static_cast<CgeFillType>(kind), false);
        EXPECT_EQ(flags.GetBits(), used ? 0u : 0xFFFFFFFFu) << kind;
    }
}

TEST(FillFlags, EveryFountainPropertyHasItsBit) {
    CGE_FOUNTAINFILL base;
    base.SetColors({Stop(0, 0), Stop(0, 100)});
    base.SetMatrix({2, 0, 0, 3, 4, 5});
    struct Change {
        std::uint32_t bits;
        void (*make)(CGE_FOUNTAINFILL&);
    };
    const Change changes[] = {
        {0, [](CGE_FOUNTAINFILL&) {}},
        {0x1, [](CGE_FOUNTAINFILL& f) { f.SetFountainType(FountainConical); }},
        {0x2,
         [](CGE_FOUNTAINFILL& f) {
             CLR_SCREENSPEC s;
             s.overprint = 1;
             f.SetScreen(s);
         }},
        {0x1000,
         [](CGE_FOUNTAINFILL& f) {
             f.SetMatrix({2.5, 0, 0, 3, 4, 5});
         }},
        {0x2000,
         [](CGE_FOUNTAINFILL& f) {
             f.SetMatrix({2, 0, 0, 3.5, 4, 5});
         }},
        {0x10,
         [](CGE_FOUNTAINFILL& f) {
             f.SetMatrix({2, 0, 0, 3, 4.5, 5});
         }},
        {0x20,
         [](CGE_FOUNTAINFILL& f) {
             f.SetMatrix({2, 0, 0, 3, 4, 5.5});
         }},
        {0x40, [](CGE_FOUNTAINFILL& f) { f.SetNumSteps(7); }},
        {0x880, [](CGE_FOUNTAINFILL& f) { f.SetColor(0, Stop(9, 0)); }},
        {0xA00, [](CGE_FOUNTAINFILL& f) { f.SetColor(0, Stop(0, 1)); }},
        {0x800, [](CGE_FOUNTAINFILL& f) { f.SetColor(1, Stop(9, 90)); }},
        {0xC00, [](CGE_FOUNTAINFILL& f) { f.SetColors({Stop(9, 1)}); }},  // one colour: no first stop bits
        {0x100, [](CGE_FOUNTAINFILL& f) { f.SetBlendRateMethod(BlendRateCustom); }},
        {0x8000, [](CGE_FOUNTAINFILL& f) { f.SetAnisotropic(true); }},
        {0x10000, [](CGE_FOUNTAINFILL& f) { f.SetSpreadMethod(SpreadRepeat); }},
        {0, [](CGE_FOUNTAINFILL& f) { f.SetBlendRateAcceleration(2e-16); }},
        {0x20000, [](CGE_FOUNTAINFILL& f) { f.SetBlendRateAcceleration(-2.5e-16); }},
        {0x20000,
         [](CGE_FOUNTAINFILL& f) { f.SetBlendRateAcceleration(std::numeric_limits<double>::quiet_NaN()); }},
        {0x40000, [](CGE_FOUNTAINFILL& f) { f.SetUnits(FountainWorldCoordinates); }},
    };
    for (const Change& change : changes) {
        CGE_FOUNTAINFILL other(base);
        change.make(other);
        EXPECT_EQ(CompareFountainFills(base, other).GetBits(), change.bits | 0x80000000u);
        EXPECT_EQ(CompareFountainFills(other, base).GetBits(), change.bits | 0x80000000u);
        EXPECT_EQ(CompareFountainFills(other, other).GetBits(), 0x80000000u);
    }
}

TEST(FillFlags, AngleAndSkewAreTheFirstGeometryBits) {
    CGE_FOUNTAINFILL base, turned, skewed;
    turned.SetParameters({{30, 0, 1, 1, 0, 0}}, VyrMath::IdentityBounds);
    skewed.SetParameters({{0, 20, 1, 1, 0, 0}}, VyrMath::IdentityBounds);
    EXPECT_TRUE(CompareFountainFills(base, turned).getParam(3));
    EXPECT_TRUE(CompareFountainFills(base, skewed).getParam(14));
    EXPECT_FALSE(CompareFountainFills(base, skewed).getParam(3));
}

}  // namespace
