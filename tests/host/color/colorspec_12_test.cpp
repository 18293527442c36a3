#include <gtest/gtest.h>
#include <random>

#include "host/color/colorspec.h"
#include "host/color/context.h"

namespace {

constexpr std::array<std::uint8_t, 16> kIdentity = {1};

CLR_COLORSPEC_125X Saved(const CLR_COLORSPEC& color, bool keepLook) {
    CLR_COLORSPEC_125X out;
    out.bytes.fill(0xEE);
    color.SaveIn12(out, ColorSystem::ColorContext(), keepLook);
    return out;
}

CLR_COLORSPEC Loaded(const CLR_COLORSPEC_125X& old) {
    CLR_COLORSPEC color;
    color.MakeCMYKBlack();
    color.SetInkDensity(3);
    color.SetIdentity(kIdentity);
    color.LoadFrom12(old);
    return color;
}

TEST(ColorSpec12, LaysOutWhatHasAPlace) {
    CLR_COLORSPEC color;
    color.MakeRGB48(0x1234, 0x5678, 0x9ABC, 40);
    color.SetPaletteType(0x0102);
    EXPECT_EQ(Loaded(Saved(color, true)), color);
    color.SetIdentity(kIdentity);
    EXPECT_EQ(Saved(color, true),
              (CLR_COLORSPEC_125X{{23, 0, 2, 1, 0x34, 0x12, 0x78, 0x56, 0xBC, 0x9A, 40, 0}}));
}

TEST(ColorSpec12, AnyBytesSurvive) {
    std::mt19937 random(5);
    for (int i = 0; i < 2000; ++i) {
        CLR_COLORSPEC_125X old;
        for (std::uint8_t& byte : old.bytes)
            byte = static_cast<std::uint8_t>(random());
        if (i % 2) old.bytes[0] = static_cast<std::uint8_t>(i % 27), old.bytes[1] = 0;
        if (i % 3) old.bytes[2] = 12, old.bytes[3] = 0;
        const CLR_COLORSPEC color = Loaded(old);
        EXPECT_EQ(color.GetInkDensity(), 100);
        EXPECT_EQ(color.GetIdentity(), CLR_COLORSPEC().GetIdentity());
        EXPECT_EQ(Saved(color, true), old);
        EXPECT_EQ(Saved(color, false), old);
        EXPECT_TRUE(old.bytes[1] == 0 || color.IsInvalid());
    }
}

TEST(ColorSpec12, KeepsTheLookOfInksAndNamedColors) {
    CLR_COLORSPEC spot, plainSpot;
    spot.MakeSpot(70000, 50);
    spot.SetInkDensity(50);
    plainSpot.MakeSpot(70000, 25);
    EXPECT_EQ(Loaded(Saved(spot, true)), plainSpot);
    plainSpot.MakeSpot(70000, 50);
    EXPECT_EQ(Loaded(Saved(spot, false)), plainSpot);

    CLR_COLORSPEC named, thinned;
    named.MakeCMYK(0, 40, 60, 100);
    thinned.MakeCMYK(0, 10, 15, 25);
    named.SetPaletteType(24);
    named.SetIdentity(kIdentity);
    named.SetInkDensity(25);
    EXPECT_EQ(Loaded(Saved(named, true)), thinned);
    thinned.MakeCMYK(0, 40, 60, 100);
    named.SetInkDensity(100);
    EXPECT_EQ(Loaded(Saved(named, true)), thinned) << "leaves a palette that it could not be found in";

    CLR_COLORSPEC index, sameIndex;
    index.MakeIndex(9);
    sameIndex = index;
    index.SetInkDensity(10);
    EXPECT_EQ(Loaded(Saved(index, true)), sameIndex) << "has no look, and is no ink";
}

}  // namespace
