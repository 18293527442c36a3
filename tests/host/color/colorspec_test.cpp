#include "host/color/colorspec.h"

#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "host/color/convert.h"
#include "host/color/screenspec.h"

namespace {

std::vector<std::uint16_t> Stored(const CLR_COLORSPEC& color) {
    return {color.GetComponent(0), color.GetComponent(1), color.GetComponent(2), color.GetComponent(3)};
}

TEST(ColorSpec, MakeClampsAndLaysOut) {
    using Words = std::vector<std::uint16_t>;
    CLR_COLORSPEC color;
    color.SetPaletteType(12);
    color.MakeCMYK(-5, 101, 50, 1000);
    EXPECT_EQ(Stored(color), (Words{0, 100, 50, 100}));
    EXPECT_EQ(color.GetPaletteType(), 0);
    color.MakeHSB(400, -1, 300);
    EXPECT_EQ(Stored(color), (Words{359, 0, 255, 0}));
    color.MakeLAB(120, -200, -1);
    EXPECT_EQ(Stored(color), (Words{100, 0xFF80, 0xFFFF, 0}));
    color.MakeRGB48(70000, -1, 5, 101);
    EXPECT_EQ(Stored(color), (Words{65535, 0, 5, 100}));
    color.MakeHexachrome({1, 2, 3, 4, 5, 600}, 7);
    EXPECT_EQ(Stored(color), (Words{0x0201, 0x0403, 0x6405, 7}));
    EXPECT_EQ(color.GetHexachrome(), (std::array<std::uint8_t, 6>{1, 2, 3, 4, 5, 100}));
    color.MakeCOLORREF(0xFF030201);
    EXPECT_EQ(Stored(color), (Words{1, 2, 3, 0}));
}

TEST(ColorSpec, InkIdentifiersAndDensities) {
    CLR_COLORSPEC color;
    color.MakeIndexedUserInk(0x12345678, 30);
    EXPECT_EQ(color.GetInkId(), 0x12345678u);
    EXPECT_EQ(color.GetDensity(), 30);
    EXPECT_TRUE(color.SetInkId(0xABCDEF01) && color.SetDensity(200));
    EXPECT_EQ(color.GetInkId(), 0xABCDEF01u);
    EXPECT_EQ(color.GetDensity(), 100);
    color.MakePantone(500, 60);
    EXPECT_TRUE(color.SetInkId(501));
    EXPECT_EQ(color.GetInkId(), 501u);
    EXPECT_EQ(color.GetDensity(), 60);
    color.MakeRGB(1, 2, 3);
    EXPECT_FALSE(color.SetInkId(1) || color.SetDensity(1));
    EXPECT_EQ(Stored(color), (std::vector<std::uint16_t>{1, 2, 3, 0}));
}

TEST(ColorSpec, Kinds) {
    CLR_COLORSPEC color;
    EXPECT_TRUE(color.IsInvalid());
    color.MakePantoneHex(1, 100);
    EXPECT_TRUE(color.IsSpot() && color.IsInk() && !color.IsInvalid());
    color.MakeUserInk(1, 2, 3, 100);
    EXPECT_TRUE(!color.IsSpot() && color.IsInk());
    color.MakeRGB(1, 2, 3);
    EXPECT_FALSE(color.IsInk());
    for (const std::uint16_t palette : std::array<std::uint16_t, 4>{12, 24, 33, 34}) {
        color.SetPaletteType(palette);
        EXPECT_TRUE(color.IsNamedPalette() && color.IsInk() && !color.IsSpot());
    }
    EXPECT_TRUE(std::bit_cast<CLR_COLORSPEC>(std::array<std::uint16_t, 16>{10}).IsInvalid());
}

/// Arbitrary bytes, few values at each place, so that many pairs agree in part.
CLR_COLORSPEC AnyColor(std::mt19937& random) {
    std::array<std::uint16_t, 16> words{};
    for (auto& word : words)
        word = static_cast<std::uint16_t>(random() % 8 == 0 ? random() : 0x100);
    if (random() % 2 != 0) words[1] = random() % 2 != 0 ? 12 : 13;
    return std::bit_cast<CLR_COLORSPEC>(words);
}

bool SameToTheEye(const CLR_COLORSPEC& a, CLR_COLORSPEC b) {
    if (!b.IsNamedPalette()) b.SetIdentity(a.GetIdentity());
    return a == b;
}

TEST(CompareColors, IsATotalOrderWithAConsistentHash) {
    std::mt19937 random(11);
    std::vector<CLR_COLORSPEC> colors(150);
    for (CLR_COLORSPEC& color : colors)
        color = AnyColor(random);
    const auto hash = [](const CLR_COLORSPEC& color) {
        host::Hasher hasher;
        host::HashColorInto(hasher, color);
        return hasher.Finish();
    };
    for (const CLR_COLORSPEC& a : colors) {
        for (const CLR_COLORSPEC& b : colors) {
            const int order = WClrConvert::CompareColors(a, b);
            ASSERT_EQ(order, -WClrConvert::CompareColors(b, a));
            ASSERT_EQ(order == 0, SameToTheEye(a, b));
            ASSERT_EQ(order == 0, hash(a) == hash(b));
            for (const CLR_COLORSPEC& c : colors) {
                if (order <= 0 && WClrConvert::CompareColors(b, c) <= 0) {
                    ASSERT_LE(WClrConvert::CompareColors(a, c), 0);
                }
            }
        }
    }
}

TEST(CompareColors, ComparesNumbersInFieldOrder) {
    CLR_COLORSPEC low, high;
    low.MakeRGB(255, 0, 0);
    high.MakeRGB48(256, 0, 0, 100);
    EXPECT_LT(WClrConvert::CompareColors(low, high), 0);  // model before components
    low.MakeRGB48(255, 0, 0, 100);
    EXPECT_LT(WClrConvert::CompareColors(low, high), 0);  // not byte by byte
    low.SetInkDensity(99);
    low.SetComponent(0, 9999);
    EXPECT_LT(WClrConvert::CompareColors(low, high), 0);
    low.SetPaletteType(1);
    EXPECT_GT(WClrConvert::CompareColors(low, high), 0);
}

TEST(ScreenSpec, OverprintTakesPartOnRequest) {
    CLR_SCREENSPEC a, b;
    b.overprint = 1;
    EXPECT_EQ(CLR_SCREENSPEC::CompareTo(a, b, false), 0);
    EXPECT_LT(CLR_SCREENSPEC::CompareTo(a, b, true), 0);
    a.frequency = 61;
    EXPECT_GT(CLR_SCREENSPEC::CompareTo(a, b, true), 0);
    b.angle = -1;
    EXPECT_LT(CLR_SCREENSPEC::CompareTo(a, b, true), 0);  // by bytes, not by sign
    a.screenId = 1;
    EXPECT_GT(CLR_SCREENSPEC::CompareTo(a, b, true), 0);
    a.Init();
    EXPECT_EQ(a, CLR_SCREENSPEC());
}

}  // namespace
