#include <cairo.h>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/base/temp_data.h"
#include "host/services/calls.h"

#include "fom/document_units.h"
#include "fom/fill_painter.h"
#include "fom/fountain_ramp.h"
#include "fom/swatch_fit.h"
#include "fom/tame.h"

namespace {

constexpr int kEdge = 40;
constexpr double kUnit = 1000;  // document units per pixel

/// A fill over an object of 40 by 40 pixels; its pixels as 0xAARRGGBB.
class Painted {
public:
    explicit Painted(const CGE_FILL& fill) : m_surface(command::MakeImageSurface(kEdge, kEdge)) {
        const command::ContextPointer context = command::MakeContext(*m_surface);
        cairo_scale(context.get(), 1 / kUnit, 1 / kUnit);
        m_missing = command::PaintFill(*context, fill, {0, 0, kEdge * kUnit, kEdge * kUnit});
        cairo_surface_flush(m_surface.get());
    }
    std::uint32_t At(int x, int y) const {
        const unsigned char* data = cairo_image_surface_get_data(m_surface.get());
        return reinterpret_cast<const std::uint32_t*>(data +
                                                      y * cairo_image_surface_get_stride(m_surface.get()))[x];
    }
    int Red(int x, int y) const { return static_cast<int>(At(x, y) >> 16 & 255); }
    int Alpha(int x, int y) const { return static_cast<int>(At(x, y) >> 24); }
    std::string_view Missing() const { return m_missing; }

private:
    command::SurfacePointer m_surface;
    std::string_view m_missing;
};

CLR_COLORSPEC Rgb(int r, int g, int b) {
    CLR_COLORSPEC color;
    color.MakeRGB(r, g, b);
    return color;
}

/// From black to red.
CGE_FILL Fountain(ClrFountainFillType type, const MATRIX& matrix) {
    CGE_FILL fill(FillFountain);
    CGE_FOUNTAINFILL& fountain = fill.EditFountain();
    fountain.SetFountainType(type);
    fountain.SetMatrix(matrix);
    fountain.SetNumColors(2);
    fountain.SetColor(0, CLR_FOUNTCOLOR{0, 0, Rgb(0, 0, 0)});
    fountain.SetColor(1, CLR_FOUNTCOLOR{0, 100, Rgb(255, 0, 0)});
    return fill;
}

constexpr MATRIX kFilling{0.5, 0, 0, 0.5, 0.5, 0.5};

TEST(FillPainter, PaintsPlainFills) {
    EXPECT_EQ(Painted(CGE_FILL()).At(5, 5), 0u);
    CGE_FILL uniform(FillUniform);
    uniform.EditUniform().color = Rgb(1, 2, 3);
    EXPECT_EQ(Painted(uniform).At(39, 39), 0xFF010203u);
    EXPECT_EQ(Painted(CGE_FILL(FillVector)).At(5, 5), 0u) << "a pattern without data";
    EXPECT_EQ(Painted(CGE_FILL(FillMonoBitmap)).At(5, 5), 0u);
}

TEST(FillPainter, PaintsFountains) {
    const Painted linear(Fountain(FountainLinear, {}));
    EXPECT_NEAR(linear.Red(0, 20), 3, 2);
    EXPECT_NEAR(linear.Red(20, 20), 130, 2);
    EXPECT_NEAR(linear.Red(39, 5), 252, 2);
    CGE_FILL turned = Fountain(FountainLinear, {});
    turned.EditFountain().SetAngle(90'000'000);
    EXPECT_NEAR(Painted(turned).Red(5, 39), 252, 2) << "y points down: the run goes downwards";

    const Painted radial(Fountain(FountainRadial, kFilling));
    EXPECT_NEAR(radial.Red(20, 20), 9, 5);
    EXPECT_NEAR(radial.Red(0, 20), 249, 4);
    EXPECT_EQ(radial.Red(0, 0), 255);
    // From outside the circle: a cone that touches it.
    CGE_FILL cone = Fountain(FountainRadial, {0.2, 0, 0, 0.2, 0.5, 0.5});
    cone.EditFountain().SetOrigin({2, 0});
    const Painted outside(cone);
    EXPECT_NEAR(outside.Red(32, 20), 111, 4);
    EXPECT_EQ(outside.Red(20, 20), 255) << "the run ends at the near side of the circle";
    EXPECT_EQ(outside.Alpha(32, 30), 0);
    EXPECT_EQ(outside.Alpha(39, 20), 0) << "nothing is painted behind the tip";
    const Painted square(Fountain(FountainSquare, kFilling));
    EXPECT_NEAR(square.Red(0, 0), 249, 4);
    EXPECT_NEAR(square.Red(10, 20), square.Red(20, 10), 1);
    const Painted conical(Fountain(FountainConical, kFilling));
    EXPECT_NEAR(conical.Red(39, 20), 2, 3);
    EXPECT_NEAR(conical.Red(0, 20), 253, 3);
    EXPECT_NEAR(conical.Red(20, 0), conical.Red(20, 39), 6);
}

TEST(FillPainter, SpreadsFountainsAndShowsTransparency) {
    CGE_FILL fill = Fountain(FountainLinear, {0.25, 0, 0, 1, 0, 0});  // ten pixels
    EXPECT_EQ(Painted(fill).Red(15, 0), 255);
    fill.EditFountain().SetSpreadMethod(SpreadRepeat);
    EXPECT_NEAR(Painted(fill).Red(12, 0), 64, 4);
    fill.EditFountain().SetSpreadMethod(SpreadReflect);
    EXPECT_NEAR(Painted(fill).Red(12, 0), 191, 4);
    fill.EditFountain().SetColor(1, CLR_FOUNTCOLOR{255, 100, Rgb(255, 0, 0)});
    EXPECT_NEAR(Painted(fill).Alpha(5, 0), 115, 4);
    fill.EditFountain().SetMatrix({0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Painted(fill).Alpha(5, 0), 0) << "without extent the last colour counts";
}

TEST(FillPainter, CutsAndPadsTheRun) {
    CGE_FILL fill = Fountain(FountainLinear, {});
    CGE_FOUNTAINFILL& fountain = fill.EditFountain();
    fountain.SetPadding(25);
    const command::FountainRamp padded(fountain);
    EXPECT_DOUBLE_EQ(padded.At(0.25).r, 0);
    EXPECT_DOUBLE_EQ(padded.At(0.5).r, 0.5);
    EXPECT_DOUBLE_EQ(padded.At(0.8).r, 1);
    fountain.SetPadding(0);
    fountain.SetNumSteps(3);
    const command::FountainRamp stepped(fountain);
    EXPECT_DOUBLE_EQ(stepped.At(0.3).r, 0);
    EXPECT_DOUBLE_EQ(stepped.At(0.4).r, 0.5);
    EXPECT_DOUBLE_EQ(stepped.At(0.6).r, 0.5);
    EXPECT_DOUBLE_EQ(stepped.At(0.7).r, 1);
}

/// A tile of 20 by 20 pixels, red at the left half and white at the right one.
CGE_FILL Bitmap() {
    std::unique_ptr<RIMAGE> image = RIMAGE::Create(2, 1, 3, 8);
    image->WriteRow(0, std::vector<std::uint8_t>{255, 0, 0, 255, 255, 255});
    CGE_FILL fill(FillColorBitmap);
    CGE_COLORBMPFILL& bitmap = fill.EditColorBitmap();
    bitmap.AdoptTmpFile(TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(std::move(image))));
    bitmap.tiling.width = bitmap.tiling.height = 20'000;
    return fill;
}

constexpr std::uint32_t kRed = 0xFFFF0000, kWhite = 0xFFFFFFFF;

TEST(FillPainter, LaysTiles) {
    CGE_FILL fill = Bitmap();
    CGE_COLORBMPFILL& bitmap = fill.EditColorBitmap();
    const auto row = [&fill](int y) {
        const Painted painted(fill);
        return std::vector<bool>{painted.At(3, y) == kRed, painted.At(17, y) == kRed,
                                 painted.At(23, y) == kRed, painted.At(37, y) == kRed};
    };
    using Row = std::vector<bool>;
    EXPECT_EQ(row(3), (Row{true, false, true, false}));
    EXPECT_EQ(Painted(fill).At(17, 3), kWhite);
    bitmap.tiling.interTileOffset = 50;
    EXPECT_EQ(row(3), (Row{true, false, true, false}));
    EXPECT_EQ(row(23), (Row{false, true, false, true}));
    bitmap.tiling.interTileOffset = 0;
    bitmap.tiling.flags = kTilingMirrorHorizontal;
    EXPECT_EQ(row(3), (Row{true, false, false, true}));
    bitmap.tiling.flags = kTilingScaleWithObject;
    bitmap.tiling.width = bitmap.tiling.height = 100;
    EXPECT_EQ(row(3), (Row{true, true, false, false}));
    bitmap.tiling = {20'000, 20'000, 50, 0, 0, 0};
    EXPECT_EQ(row(3), (Row{false, true, false, true})) << "the first tile starts half a tile to the right";
}

/// A tile of 20 by 20 pixels that shows 8 by 8 pixels of the content.
CGE_FILL Vector(std::string_view content) {
    CGE_FILL fill(FillVector);
    CGE_VECTORFILL& vector = fill.EditVector();
    vector.AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(content))));
    vector.tiling.width = vector.tiling.height = 20'000;
    vector.boundingBox = {0, 0, 20'000, 20'000};
    vector.originalBoundingBox = {0, 0, 21167, 21167};
    return fill;
}

TEST(FillPainter, DrawsVectorAndTwoColourTiles) {
    const CGE_FILL fill = Vector("<rect width=\"4\" height=\"8\" fill=\"#f00\"></rect>");
    EXPECT_EQ(Painted(fill).At(4, 4), kRed);
    EXPECT_EQ(Painted(fill).At(16, 4), 0u);
    EXPECT_EQ(Painted(fill).At(24, 24), kRed);

    CGE_FILL mono(FillMonoBitmap);
    mono.EditMonoBitmap().bitmap =
        host::Installed().monoPatterns.GetPattern(9);  // upright lines, every other pixel
    mono.EditMonoBitmap().tiling.width = mono.EditMonoBitmap().tiling.height = 32'000;
    mono.EditMonoBitmap().foreground = Rgb(255, 0, 0);
    mono.EditMonoBitmap().background = Rgb(255, 255, 255);
    EXPECT_EQ(Painted(mono).At(1, 30), kRed);
    EXPECT_EQ(Painted(mono).At(6, 30), kWhite);
}

std::string Repeat(int times, std::string_view text) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

/// A green square, through a filter of these steps.
std::string Filtered(const std::string& steps) {
    return R"x(<rect fill="#0f0" filter="url(#r1)" height="8" width="8"></rect><defs><filter id="r1">)x" +
           steps + "</filter></defs>";
}

TEST(FillPainter, SurvivesFilters) {
    const std::string flood = R"x(<feFlood flood-color="#f00"></feFlood>)x";
    const Painted plain(Vector(Filtered(Repeat(100, flood))));
    EXPECT_EQ(plain.At(10, 10), kRed);
    EXPECT_EQ(plain.Missing(), "");
    const std::string matrix = Repeat(3600, "1 ");
    const Painted convolved(Vector(Filtered("<feConvolveMatrix kernelMatrix=\"" + matrix +
                                            "\" order=\"60\"></feConvolveMatrix>" + flood)));
    EXPECT_EQ(convolved.At(10, 10), kRed) << "the other steps remain";
    EXPECT_EQ(convolved.Missing(), "convolution left out");
    const Painted noisy(
        Vector(Filtered(R"x(<feTurbulence baseFrequency="1" numOctaves="2147483647"></feTurbulence>)x")));
    EXPECT_NE(noisy.At(10, 10), 0xFF00FF00u);
    EXPECT_EQ(noisy.Missing(), "noise of one octave");
    const Painted many(Vector(Filtered(Repeat(6000, flood))));
    EXPECT_EQ(many.At(10, 10), 0xFF00FF00u);
    EXPECT_EQ(many.Missing(), "filters left out");
    EXPECT_EQ(Painted(Vector("<rect></g>")).Missing(), "cannot be drawn");
}

TEST(FillPainter, CountsFilterStepsAsOftenAsTheyAreTaken) {
    const auto missing = [](std::string content) { return command::Tame(content, 100); };
    const std::string steps = R"x(<filter id="r1">)x" + Repeat(9, "<feOffset></feOffset>") + "</filter>";
    const std::string one = R"x(<rect filter="url(#r1)"></rect>)x";
    EXPECT_EQ(missing(Repeat(10, one) + "<defs>" + steps + "</defs>"), "");
    EXPECT_EQ(missing(Repeat(11, one) + "<defs>" + steps + "</defs>"), "filters left out");
    EXPECT_EQ(missing("<rect filter=\"" + Repeat(101, "blur(1px) ") + "\"></rect>"), "filters left out");
    const std::string used = "<defs><g id=\"r2\">" + one + "</g>" + steps + "</defs>";
    EXPECT_EQ(missing(Repeat(11, R"x(<use href="#r2"></use>)x") + used), "filters left out");
    const std::string pattern =
        R"x(<defs><pattern height="1" id="r2" width="1">)x" + one + "</pattern>" + steps + "</defs>";
    const std::string painted = Repeat(9, "<path d=\"M0 0\"></path>");
    EXPECT_EQ(missing(R"x(<g fill="url(#r2)">)x" + painted + "</g>" + pattern), "");
    EXPECT_EQ(missing(R"x(<g fill="url(#r2)">)x" + painted + painted + "</g>" + pattern), "filters left out");
    std::string text = R"x(<text filter="url(#r1)">numOctaves=&quot;9&quot; &lt;feConvolveMatrix</text>)x";
    const std::string before = text;
    EXPECT_EQ(command::Tame(text, 100), "");
    EXPECT_EQ(text, before);
}

TEST(FillPainter, DrawsHatchLines) {
    CGE_FILL fill(FillHatch);
    CGE_HATCHFILL& hatch = fill.EditHatch();
    hatch.background = Rgb(255, 255, 255);
    hatch.SetHatchArraySize(1);
    hatch.lines[0].origin = {0, 5'000};
    hatch.lines[0].spacing = 10'000;
    hatch.lines[0].pen.type = OutlineSolid;
    hatch.lines[0].pen.width = 4'000;
    hatch.lines[0].pen.color = Rgb(255, 0, 0);
    const Painted level(fill);
    for (const int x : {0, 20, 39}) {
        EXPECT_EQ(level.At(x, 5), kRed);
        EXPECT_EQ(level.At(x, 35), kRed);
        EXPECT_EQ(level.At(x, 10), kWhite);
    }
    hatch.lines[0].angle = 90'000'000;
    EXPECT_EQ(Painted(fill).At(10, 3), kRed);
    EXPECT_EQ(Painted(fill).At(5, 3), kWhite);
}

TEST(SwatchFit, ShowsWholeRunsAndTiles) {
    CGE_FILL fill = Fountain(FountainLinear, {1000, 0, 0, 1000, 5000, 7000});
    fill.EditFountain().SetUnits(FountainWorldCoordinates);
    const command::ObjectBounds run = command::FitSwatch(fill, 100, 50);
    EXPECT_EQ(run, (command::ObjectBounds{5000, 6750, 6000, 7250}));
    fill.EditFountain().SetFountainType(FountainRadial);
    EXPECT_EQ(command::FitSwatch(fill, 100, 50), (command::ObjectBounds{3000, 6000, 7000, 8000}));
    CGE_FILL large = Bitmap();
    large.EditColorBitmap().tiling.height = 80'000'000;
    const command::ObjectBounds tile = command::FitSwatch(large, 100, 50);
    EXPECT_LT(tile.top, 0);
    EXPECT_GT(tile.bottom, 80'000'000);
}

}  // namespace
