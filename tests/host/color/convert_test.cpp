#include "host/color/convert.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

constexpr ClrModel kProcess[] = {
    ClrModel::CMYK,   ClrModel::CMYK255, ClrModel::CMY, ClrModel::RGB,    ClrModel::HSB,
    ClrModel::HLS,    ClrModel::Gray,    ClrModel::LAB, ClrModel::Gray24, ClrModel::BlackAndWhite,
    ClrModel::YIQ255, ClrModel::LAB255,  ClrModel::XYZ, ClrModel::RGB48,  ClrModel::Hexachrome};

using Components = std::array<int, 4>;

CLR_COLORSPEC Rgb(int r, int g, int b) {
    CLR_COLORSPEC color;
    color.MakeRGB(r, g, b);
    return color;
}
CLR_COLORSPEC Cmyk(int c, int m, int y, int k) {
    CLR_COLORSPEC color;
    color.MakeCMYK(c, m, y, k);
    return color;
}
CLR_COLORSPEC To(ClrModel model, const CLR_COLORSPEC& in) {
    CLR_COLORSPEC out;
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(ColorContext(), out, model, in));
    EXPECT_EQ(out.GetModel(), model);
    return out;
}
Components Parts(const CLR_COLORSPEC& color) {
    Components parts{};
    for (unsigned i = 0; i < 4; ++i)
        parts[i] = static_cast<std::int16_t>(color.GetComponent(i));
    return parts;
}
int Distance(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) {
    int most = 0;
    for (unsigned i = 0; i < 4; ++i)
        most = std::max(most, std::abs(a.GetComponent(i) - b.GetComponent(i)));
    return most;
}

/// The largest error of any RGB component on the way to `model` and back, over a grid of all corners.
int RoundTripError(ClrModel model) {
    int most = 0;
    for (int r = 0; r < 256; r += 5) {
        for (int g = 0; g < 256; g += 5) {
            for (int b = 0; b < 256; b += 5) {
                const CLR_COLORSPEC in = Rgb(r, g, b);
                most = std::max(most, Distance(in, To(ClrModel::RGB, To(model, in))));
            }
        }
    }
    return most;
}

TEST(Convert, RgbSurvivesEveryColourModelWithinItsResolution) {
    for (const ClrModel model : {ClrModel::RGB48, ClrModel::CMY, ClrModel::XYZ, ClrModel::CMYK255}) {
        EXPECT_EQ(RoundTripError(model), 0) << static_cast<int>(model);
    }
    for (const ClrModel model : {ClrModel::CMYK, ClrModel::Hexachrome, ClrModel::HSB, ClrModel::YIQ255}) {
        EXPECT_EQ(RoundTripError(model), 2) << static_cast<int>(model);
    }
    EXPECT_EQ(RoundTripError(ClrModel::HLS), 3);
    EXPECT_LE(RoundTripError(ClrModel::LAB255), 22);
    EXPECT_LE(RoundTripError(ClrModel::LAB), 25);
}

TEST(Convert, BlackAndWhiteAreExactBetweenAllPairs) {
    for (const ClrModel from : kProcess) {
        const CLR_COLORSPEC black = To(from, Rgb(0, 0, 0));
        const CLR_COLORSPEC white = To(from, Rgb(255, 255, 255));
        for (const ClrModel to : kProcess) {
            EXPECT_EQ(To(to, black), To(to, Rgb(0, 0, 0))) << static_cast<int>(from) << static_cast<int>(to);
            EXPECT_EQ(To(to, white), To(to, Rgb(255, 255, 255)))
                << static_cast<int>(from) << static_cast<int>(to);
        }
    }
    EXPECT_EQ(To(ClrModel::CMYK, Rgb(0, 0, 0)), Cmyk(0, 0, 0, 100));
    EXPECT_EQ(To(ClrModel::CMYK, Rgb(255, 255, 255)), Cmyk(0, 0, 0, 0));
}

TEST(Convert, KnownColours) {
    EXPECT_EQ(Parts(To(ClrModel::HSB, Rgb(255, 128, 0))), (Components{30, 255, 255, 0}));
    EXPECT_EQ(Parts(To(ClrModel::HSB, Rgb(255, 0, 1))), (Components{0, 255, 255, 0}));  // 359.8 degrees
    EXPECT_EQ(Parts(To(ClrModel::HLS, Rgb(0, 0, 255))), (Components{240, 128, 255, 0}));
    EXPECT_EQ(Parts(To(ClrModel::LAB, Rgb(255, 0, 0))), (Components{53, 80, 67, 0}));
    EXPECT_EQ(Parts(To(ClrModel::LAB255, Rgb(0, 0, 255))), (Components{82, 207, 20, 0}));
    EXPECT_EQ(Parts(To(ClrModel::XYZ, Rgb(255, 255, 255))), (Components{31145, -32768, -29857, 0}));
    EXPECT_EQ(Parts(To(ClrModel::Gray, Rgb(0, 255, 0))), (Components{150, 0, 0, 0}));
    EXPECT_EQ(Parts(To(ClrModel::YIQ255, Rgb(255, 0, 0))), (Components{76, 255, 179, 0}));
    EXPECT_EQ(To(ClrModel::CMYK, Rgb(255, 51, 0)), Cmyk(0, 80, 100, 0));
    EXPECT_EQ(To(ClrModel::RGB, Cmyk(50, 0, 100, 80)), Rgb(26, 51, 0));  // 25.5 rounds away from zero
    EXPECT_EQ(To(ClrModel::BlackAndWhite, Rgb(127, 127, 127)).GetComponent(0), 0);
    EXPECT_EQ(To(ClrModel::BlackAndWhite, Rgb(128, 128, 128)).GetComponent(0), 1);
}

TEST(Convert, InksStayInksWithinTheirFamily) {
    EXPECT_EQ(Parts(To(ClrModel::CMYK255, Cmyk(50, 50, 50, 20))), (Components{128, 128, 128, 51}));
    EXPECT_EQ(To(ClrModel::CMYK, To(ClrModel::Hexachrome, Cmyk(1, 20, 33, 4))), Cmyk(1, 20, 33, 4));
    CLR_COLORSPEC hexachrome;
    hexachrome.MakeHexachrome({40, 10, 20, 5, 30, 7}, 100);
    EXPECT_EQ(To(ClrModel::CMYK, hexachrome), Cmyk(35, 40, 80, 7));
}

TEST(Convert, TintsThinInksAndPalettesOnly) {
    CLR_COLORSPEC ink;
    ink.MakeUserInk(0, 100, 255, 50);
    EXPECT_EQ(To(ClrModel::RGB, ink), Rgb(128, 178, 255));
    ink.SetInkDensity(0);
    EXPECT_EQ(To(ClrModel::RGB, ink), Rgb(255, 255, 255));

    CLR_COLORSPEC named = Cmyk(80, 0, 0, 40);
    named.SetInkDensity(50);
    EXPECT_EQ(To(ClrModel::CMYK255, named).GetComponent(0), 204);  // plain: no tint
    named.SetPaletteType(33);
    EXPECT_EQ(Parts(To(ClrModel::CMYK255, named)), (Components{102, 0, 0, 51}));
    CLR_COLORSPEC lab;
    lab.MakeLAB(0, 0, 0);
    lab.SetPaletteType(12);
    lab.SetInkDensity(0);
    EXPECT_EQ(To(ClrModel::RGB, lab), Rgb(255, 255, 255));
}

TEST(Convert, ResultIsPlainAndKeepsOnlyStyleIdentity) {
    std::array<std::uint8_t, 16> identity{};
    identity[3] = 7;
    CLR_COLORSPEC in = Rgb(1, 2, 3);
    in.SetIdentity(identity);
    in.SetPaletteType(5);
    EXPECT_EQ(To(ClrModel::RGB, in), in);
    const CLR_COLORSPEC out = To(ClrModel::CMY, in);
    EXPECT_EQ(out.GetIdentity(), identity);
    EXPECT_EQ(out.GetPaletteType(), 0);
    in.SetPaletteType(24);
    CLR_COLORSPEC plain;
    plain.MakeCMY(254, 253, 252);
    EXPECT_EQ(To(ClrModel::CMY, in), plain);
}

TEST(Convert, RefusesWhatHasNoAppearance) {
    CLR_COLORSPEC spot, index;
    spot.MakeSpot(70000, 40);
    index.MakeIndex(9);
    CLR_COLORSPEC out = Rgb(1, 2, 3);
    const CLR_COLORSPEC before = out;
    const ColorContext context = ColorContext::Uncalibrated();
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(context, out, ClrModel::RGB, spot));
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(context, out, ClrModel::RGB, CLR_COLORSPEC()));
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(context, out, ClrModel::None, CLR_COLORSPEC()));
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(context, out, ClrModel::Spot, Rgb(1, 1, 1)));
    EXPECT_FALSE(WClrConvert::ConvertColorSpec(context, out, static_cast<ClrModel>(999), Rgb(1, 1, 1)));
    EXPECT_EQ(out, before);
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(context, out, ClrModel::Spot, spot));

    std::vector<CLR_COLORSPEC> many = {spot, Rgb(0, 0, 0), index, Cmyk(0, 0, 0, 0)};
    EXPECT_EQ(WClrConvert::ConvertColorSpecs(context, many, ClrModel::CMYK), 2u);
    EXPECT_EQ(many, (std::vector<CLR_COLORSPEC>{spot, Cmyk(0, 0, 0, 100), index, Cmyk(0, 0, 0, 0)}));
    EXPECT_EQ(WClrConvert::ConvertColorSpecs(context, many, ClrModel::Spot), 1u);
}

TEST(Convert, DisplayShowsTints) {
    const ColorContext context;
    using Shown = std::array<std::uint8_t, 3>;
    CLR_COLORSPEC color;
    color.MakeSpot(3, 50);
    color.SetInkDensity(50);
    EXPECT_EQ(WClrConvert::GetDisplayRGB(context, color), (Shown{191, 191, 191}));
    color = Rgb(255, 0, 55);
    color.SetPaletteType(12);
    color.SetInkDensity(20);
    EXPECT_EQ(WClrConvert::GetDisplayRGB(context, color), (Shown{255, 204, 215}));
    EXPECT_EQ(WClrConvert::GetDisplayRGB(context, Cmyk(0, 0, 0, 100)), (Shown{0, 0, 0}));
    EXPECT_EQ(WClrConvert::GetDisplayRGB(context, CLR_COLORSPEC()), (Shown{0, 0, 0}));
    color = Rgb(0, 0, 0);
    color.SetComponent(1, 65535);
    EXPECT_EQ(WClrConvert::GetDisplayRGB(context, color), (Shown{0, 255, 0}));
}

TEST(Convert, ComponentsOutOfRangeStillGiveColoursInRange) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        CLR_COLORSPEC in;
        for (const ClrModel from : kProcess) {
            in = To(from, Rgb(9, 9, 9));
            for (unsigned i = 0; i < 4; ++i)
                in.SetComponent(i, static_cast<std::uint16_t>(random()));
            const CLR_COLORSPEC hsb = To(ClrModel::HSB, in);
            ASSERT_TRUE(from == ClrModel::HSB || (hsb.GetComponent(0) < 360 && hsb.GetComponent(1) < 256));
            const CLR_COLORSPEC inks = To(ClrModel::CMYK, in);
            ASSERT_TRUE(from == ClrModel::CMYK ||
                        (inks.GetComponent(0) <= 100 && inks.GetComponent(3) <= 100));
        }
    }
}

}  // namespace
