#include <gtest/gtest.h>
#include <string>

#include "fom/document_units.h"
#include "fom/gradient_mapping.h"
#include "fom/pattern_mapping.h"

#include "svg/document.h"

namespace {

/// The fountain of the only shape of a drawing with these definitions, one of which has the id "g".
CGE_FOUNTAINFILL FountainOf(const std::string& definitions, svg::Omissions* omissions = nullptr) {
    const std::string text = "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'>" +
                             definitions + "<rect x='10' width='10' height='10' fill='url(#g)'/></svg>";
    CGE_FOUNTAINFILL result;
    svg::Omissions unused;
    svg::Document document;
    EXPECT_TRUE(document.LoadText(text));
    EXPECT_TRUE(document.ForEachShape([&](const svg::Shape& shape) {
        ASSERT_NE(shape.fill.gradient, nullptr);
        result = command::MapGradient(*shape.fill.gradient, omissions ? *omissions : unused);
    }));
    return result;
}

std::string Linear(const std::string& attributes) {
    return "<linearGradient id='g' " + attributes +
           "><stop offset='0'/><stop offset='1' stop-color='white'/></linearGradient>";
}

std::string Radial(const std::string& attributes) {
    return "<radialGradient id='g' " + attributes +
           "><stop offset='0'/><stop offset='1' stop-color='white'/></radialGradient>";
}

void ExpectMaps(const CGE_FOUNTAINFILL& fountain, VECTOR2D from, VECTOR2D to) {
    const VECTOR2D found = TransformPoint(fountain.GetMatrix(), from);
    EXPECT_NEAR(found.x, to.x, 1e-6);
    EXPECT_NEAR(found.y, to.y, 1e-6);
}

constexpr double kPixel = command::kUnitsPerPixel;

TEST(GradientMapping, PlacesUnitSpace) {
    const CGE_FOUNTAINFILL plain = FountainOf(Linear(""));
    EXPECT_EQ(plain.GetFountainType(), FountainLinear);
    EXPECT_EQ(plain.GetUnits(), FountainObjectBounds);
    EXPECT_EQ(plain.GetMatrix(), MATRIX());
    const CGE_FOUNTAINFILL slanted = FountainOf(Linear("x1='0.25' y1='0.5' x2='0.75' y2='1'"));
    ExpectMaps(slanted, {0, 0}, {0.25, 0.5});
    ExpectMaps(slanted, {1, 0}, {0.75, 1});
    ExpectMaps(slanted, {0, 1}, {-0.25, 1});  // across the run: a quarter turn, the same length
    const CGE_FOUNTAINFILL world = FountainOf(Linear(
        "gradientUnits='userSpaceOnUse' x1='10' x2='50%' gradientTransform='translate(0,5) scale(2,3)'"));
    EXPECT_EQ(world.GetUnits(), FountainWorldCoordinates);
    ExpectMaps(world, {0, 0}, {20 * kPixel, 5 * kPixel});
    ExpectMaps(world, {1, 0}, {200 * kPixel, 5 * kPixel});
    ExpectMaps(world, {0, 1}, {20 * kPixel, 275 * kPixel});

    const CGE_FOUNTAINFILL radial = FountainOf(Radial(""));
    EXPECT_EQ(radial.GetFountainType(), FountainRadial);
    EXPECT_EQ(radial.GetMatrix(), (MATRIX{0.5, 0, 0, 0.5, 0.5, 0.5}));
    EXPECT_EQ(radial.GetOrigin(), VECTOR2D());
    const CGE_FOUNTAINFILL focused = FountainOf(Radial("cx='0.5' cy='0.5' r='0.5' fx='0.25' fy='0.75'"));
    EXPECT_EQ(focused.GetOrigin(), (VECTOR2D{-0.5, 0.5}));
    ExpectMaps(focused, focused.GetOrigin(), {0.25, 0.75});
    svg::Omissions omissions;
    EXPECT_EQ(FountainOf(Radial("fx='3.5'"), &omissions).GetOrigin(), (VECTOR2D{6, 0}));
    EXPECT_TRUE(omissions.Counts().empty());
    EXPECT_EQ(FountainOf(Radial("r='1e-300' fx='1e10'"), &omissions).GetOrigin(), VECTOR2D());
    EXPECT_EQ(omissions.Of("gradient coordinates out of range"), 1u);
    // What looks alike is alike, down to the signs of zeros.
    EXPECT_EQ(FountainOf(Linear("x1='0' y1='-0' x2='1'")).CompareTo(plain), 0);
}

TEST(GradientMapping, CarriesStopsOver) {
    svg::Omissions omissions;
    const CGE_FOUNTAINFILL fountain = FountainOf(
        "<linearGradient id='g' spreadMethod='reflect'><stop offset='0.33333' stop-color='#010203'/>"
        "<stop offset='49.9999%' stop-color='red' stop-opacity='0.2'/><stop offset='.5' stop-color='lime'/>"
        "<stop offset='.666' stop-color='blue' stop-opacity='0'/></linearGradient>",
        &omissions);
    EXPECT_EQ(fountain.GetSpreadMethod(), SpreadReflect);
    EXPECT_EQ(fountain.GetNumSteps(), 0);
    ASSERT_EQ(fountain.GetNumColors(), 4);
    const std::uint16_t positions[] = {33, 50, 50, 67}, transparencies[] = {0, 204, 0, 255};
    for (unsigned i = 0; i < 4; ++i) {
        EXPECT_EQ(fountain.GetColor(i).position, positions[i]);
        EXPECT_EQ(fountain.GetColor(i).transparency, transparencies[i]);
    }
    CLR_COLORSPEC first;
    first.MakeRGB(1, 2, 3);
    EXPECT_EQ(fountain.GetColor(0).color, first);
    // A third and two thirds lie between; what differs only in written digits does not.
    EXPECT_EQ(omissions.Of("stop offset between whole per cents"), 2u);
}

/// The tile of a pattern with this start tag, over a shape of 10 by 20.
CGE_FILL TileOf(const std::string& attributes, svg::Omissions& omissions) {
    const std::string text =
        "<svg xmlns='http://www.w3.org/2000/svg'><pattern id='p' " + attributes +
        "><path d='M0 0h1v1z'/></pattern><rect width='10' height='20' fill='url(#p)'/></svg>";
    CGE_FILL result;
    svg::Document document;
    EXPECT_TRUE(document.LoadText(text));
    EXPECT_TRUE(document.ForEachShape([&](const svg::Shape& shape) {
        host::Error error;
        ASSERT_NE(shape.fill.pattern, nullptr);
        result = command::MapPattern(*shape.fill.pattern, shape.Bounds(omissions), omissions, error).value();
    }));
    return result;
}

TEST(PatternMapping, LaysOutTiles) {
    svg::Omissions omissions;
    // 96 pixels are an inch: 254000 document units; 48 are half of it.
    const CGE_FILL plain =
        TileOf("patternUnits='userSpaceOnUse' x='96' y='-48' width='48' height='96'", omissions);
    ASSERT_EQ(plain.GetType(), FillVector);
    EXPECT_EQ(*plain.GetCGETiling(), (CGE_TILING{127000, 254000, 0, 0, 0, 0}));
    EXPECT_EQ(plain.Pattern()->boundingBox, (RECT{254000, -127000, 381000, 127000}));
    EXPECT_EQ(plain.Pattern()->originalBoundingBox, (RECT{0, 0, 127000, 254000}));

    const CGE_FILL boxed =
        TileOf("patternUnits='userSpaceOnUse' width='48' height='48' viewBox='96 0 96 192'", omissions);
    EXPECT_EQ(boxed.Pattern()->originalBoundingBox, (RECT{127000, 0, 635000, 508000})) << "centred, whole";

    const CGE_FILL share =
        TileOf("x='0.5' width='0.25' height='50%' patternContentUnits='objectBoundingBox'", omissions);
    EXPECT_EQ(*share.GetCGETiling(), (CGE_TILING{25, 50, 0, 0, 0, kTilingScaleWithObject}));
    EXPECT_EQ(share.Pattern()->boundingBox, (RECT{127000, 0, 190500, 127000}));
    EXPECT_TRUE(omissions.Counts().empty());

    const CGE_FILL apart = TileOf("width='0.5' height='0.5'", omissions);
    EXPECT_EQ(apart.Pattern()->originalBoundingBox, (RECT{0, 0, 13229, 26458}))
        << "of this shape: 5 by 10 pixels";
    EXPECT_EQ(omissions.Of("pattern content measured apart from its tile"), 1u);
    // Sizes beyond what a record holds saturate.
    EXPECT_EQ(
        TileOf("patternUnits='userSpaceOnUse' width='1e9' height='1e-9'", omissions).GetCGETiling()->height,
        1);
}

}  // namespace
