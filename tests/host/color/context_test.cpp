#include "host/color/context.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <vector>

#include "host/color/convert.h"

#include "icc_bytes.h"

namespace {

TEST(ColorContext, ActiveFallsBackToTheApplicationDefault) {
    EXPECT_FALSE(ColorContext().IsValid());
    EXPECT_EQ(ColorContext::Uncalibrated(), ColorContext::GetActiveColorContext());
    host::Error error;
    const auto none = ColorContext::FromProfiles({}, {}, {}, error);
    EXPECT_EQ(none, ColorContext::Uncalibrated());
}

#ifdef _WIN32

TEST(ColorContext, ProfilesNeedAnEngine) {
    host::Error error;
    EXPECT_FALSE(ColorContext::FromProfiles(icc_bytes::Rgb(), {}, {}, error));
    EXPECT_FALSE(error.reason.empty());
}

#else

ColorContext Calibrated() {
    host::Error error;
    auto context = ColorContext::FromProfiles(icc_bytes::Rgb(), icc_bytes::Cmyk(), icc_bytes::Gray(), error);
    EXPECT_TRUE(context) << error.what << ": " << error.reason;
    return context.value_or(ColorContext());
}

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
CLR_COLORSPEC Lab(int l, int a, int b) {
    CLR_COLORSPEC color;
    color.MakeLAB(l, a, b);
    return color;
}
CLR_COLORSPEC To(const ColorContext& context, ClrModel model, const CLR_COLORSPEC& in) {
    CLR_COLORSPEC out;
    EXPECT_TRUE(WClrConvert::ConvertColorSpec(context, out, model, in));
    return out;
}

TEST(IccConversion, ProfilesDecideWhereBothSidesHaveOne) {
    const ColorContext context = Calibrated();
    // Grey 128 at gamma 2.2 has L* 54, which this press prints as 46 per cent black.
    EXPECT_EQ(To(context, ClrModel::CMYK, Rgb(128, 128, 128)), Cmyk(0, 0, 0, 46));
    EXPECT_EQ(To(context, ClrModel::CMYK, Rgb(255, 255, 255)), Cmyk(0, 0, 0, 0));
    EXPECT_EQ(To(context, ClrModel::CMYK, Rgb(0, 0, 0)), Cmyk(0, 0, 0, 100));
    CLR_COLORSPEC brightness, gray;
    brightness.MakeHSB(0, 0, 128);
    gray.MakeGray(128);
    EXPECT_EQ(To(context, ClrModel::CMYK, brightness), Cmyk(0, 0, 0, 46));
    EXPECT_EQ(To(context, ClrModel::CMYK, gray), Cmyk(0, 0, 0, 46));
    EXPECT_EQ(To(context, ClrModel::Gray, Cmyk(0, 0, 0, 46)), gray);
    EXPECT_EQ(To(context, ClrModel::RGB, Cmyk(0, 0, 0, 46)), Rgb(128, 128, 128));
    EXPECT_EQ(To(context, ClrModel::RGB, Lab(54, 0, 0)), Rgb(128, 128, 128));
    EXPECT_EQ(To(context, ClrModel::LAB, Cmyk(0, 0, 0, 46)), Lab(54, 0, 0));
    EXPECT_EQ(To(context, ClrModel::LAB, Rgb(255, 0, 0)), Lab(53, 80, 67));  // adapted back to D65
    // Models that share a profile's numbers convert by formula.
    EXPECT_EQ(To(context, ClrModel::CMY, Rgb(100, 0, 0)), To(ColorContext(), ClrModel::CMY, Rgb(100, 0, 0)));
}

TEST(IccConversion, MissingProfileLeavesThatModelToTheFormulas) {
    host::Error error;
    const auto context = ColorContext::FromProfiles(icc_bytes::Rgb(), {}, {}, error);
    ASSERT_TRUE(context);
    EXPECT_EQ(To(*context, ClrModel::CMYK, Rgb(51, 51, 51)), Cmyk(0, 0, 0, 80));
}

/// Every kind of packing, some colours that stay, and more than a block of them.
std::vector<CLR_COLORSPEC> MixedColors() {
    std::mt19937 random(3);
    std::vector<CLR_COLORSPEC> colors;
    const auto any = [&random](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    for (int i = 0; i < 300; ++i) {
        CLR_COLORSPEC color = Rgb(any(256), any(256), any(256));
        colors.push_back(color);
        color.SetPaletteType(12);
        color.SetInkDensity(any(101));
        colors.push_back(color);
        colors.push_back(Cmyk(any(101), any(101), any(101), any(101)));
        color.MakeCMYK255(any(256), any(256), any(256), any(256));
        colors.push_back(color);
        color.MakeGray(any(256));
        colors.push_back(color);
        colors.push_back(Lab(any(101), any(100) - 50, any(100) - 50));
        color.MakeSpot(5, any(101));
        colors.push_back(color);
        color.MakeUserInk(any(256), any(256), any(256), any(101));
        colors.push_back(color);
    }
    return colors;
}

TEST(IccConversion, BatchEqualsOneByOneFromAnyThread) {
    const ColorContext context = Calibrated();
    const std::vector<CLR_COLORSPEC> colors = MixedColors();
    const auto check = [&](ClrModel model) {
        std::vector<CLR_COLORSPEC> batch = colors;
        const std::size_t converted = WClrConvert::ConvertColorSpecs(context, batch, model);
        std::size_t expected = 0;
        for (std::size_t i = 0; i < colors.size(); ++i) {
            CLR_COLORSPEC one = colors[i];
            expected += WClrConvert::ConvertColorSpec(context, one, model, colors[i]);
            EXPECT_EQ(batch[i], one) << i;
        }
        EXPECT_EQ(converted, expected);
    };
    std::vector<std::thread> threads;
    for (const ClrModel model : {ClrModel::CMYK, ClrModel::CMYK, ClrModel::RGB, ClrModel::Gray, ClrModel::LAB,
                                 ClrModel::RGB48, ClrModel::CMYK255}) {
        threads.emplace_back(check, model);
    }
    for (std::thread& thread : threads)
        thread.join();
}

TEST(IccProfiles, RefusesWhatDoesNotServe) {
    host::Error error;
    EXPECT_FALSE(ColorContext::FromProfiles(icc_bytes::Cmyk(), {}, {}, error));
    EXPECT_EQ(error.what, "RGB profile");
    EXPECT_EQ(error.reason, "the profile is of another colour space");
    EXPECT_FALSE(ColorContext::FromProfiles({}, icc_bytes::Bytes(500), {}, error));
    EXPECT_EQ(error.what, "CMYK profile");
    EXPECT_FALSE(error.reason.empty());
    const icc_bytes::Bytes untagged = icc_bytes::Profile("mntr", "GRAY", "XYZ ", {});
    EXPECT_FALSE(ColorContext::FromProfiles({}, {}, untagged, error));
    EXPECT_EQ(error.what, "grey profile");
}

TEST(IccProfiles, DamagedBytesNeverDoHarm) {
    std::mt19937 random(5);
    const icc_bytes::Bytes whole = icc_bytes::Cmyk();
    std::size_t refused = 0;
    for (int round = 0; round < 240; ++round) {
        icc_bytes::Bytes bytes = whole;
        if (round % 3 == 0) bytes.resize(random() % bytes.size() + 1);
        for (int i = 0; i < 3; ++i)
            bytes[random() % std::min<std::size_t>(bytes.size(), 260)] ^= std::byte(random());
        host::Error error;
        const auto context = ColorContext::FromProfiles(icc_bytes::Rgb(), bytes, {}, error);
        refused += !context;
        EXPECT_EQ(!context, !error.reason.empty());
        if (context) To(*context, ClrModel::CMYK, Rgb(1, 2, 3));
    }
    EXPECT_GT(refused, 60u);
}

#endif

}  // namespace
