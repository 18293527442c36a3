#include "fom/stroke_painter.h"

#include <cairo.h>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <span>
#include <string>

#include "host/base/temp_data.h"

#include "fom/document_units.h"
#include "fom/fill_painter.h"
#include "fom/outline_mapping.h"

#include "svg/document.h"

namespace {

constexpr int kEdge = 60;

/// A picture of 60 by 60 pixels at 96 to the inch.
class Picture {
public:
    Picture()
        : m_surface(command::MakeImageSurface(kEdge, kEdge)), m_context(command::MakeContext(*m_surface)) {
        cairo_scale(m_context.get(), 1 / command::kUnitsPerPixel, 1 / command::kUnitsPerPixel);
    }
    command::CairoContext& Target() { return *m_context; }
    int AlphaAt(int x, int y) const {
        cairo_surface_flush(m_surface.get());
        const unsigned char* data = cairo_image_surface_get_data(m_surface.get());
        return data[y * cairo_image_surface_get_stride(m_surface.get()) + 4 * x + 3];
    }
    /// Pixels that the pictures do not agree in, in whole pixels of full opacity.
    double DifferenceFrom(const Picture& other) const {
        double sum = 0;
        for (int y = 0; y < kEdge; ++y)
            for (int x = 0; x < kEdge; ++x)
                sum += std::abs(AlphaAt(x, y) - other.AlphaAt(x, y));
        return sum / 255;
    }
    double Area() const { return DifferenceFrom(Picture()); }

private:
    command::SurfacePointer m_surface;
    command::ContextPointer m_context;
};

VECTOR2D Unit(double x, double y) {
    return {x * command::kUnitsPerPixel, y * command::kUnitsPerPixel};
}

/// Up, down and a curve to the right, on the page.
constexpr const char* kPath = "M10 45L20 15L30 45C35 10 40 10 48 30";
command::Polyline Line() {
    command::Polyline line{{Unit(10, 45), Unit(20, 15), Unit(30, 45)}, false};
    line.AddCurve(Unit(35, 10), Unit(40, 10), Unit(48, 30));
    return line;
}

/// As the library that draws SVG sees it.
Picture Reference(const std::string& content) {
    CGE_FILL fill(FillVector);
    CGE_VECTORFILL& vector = fill.EditVector();
    vector.AdoptTmpFile(TMPCreateTmpFile(std::as_bytes(std::span(content))));
    const int side = static_cast<int>(kEdge * command::kUnitsPerPixel);
    vector.tiling.width = vector.tiling.height = side;
    vector.boundingBox = vector.originalBoundingBox = {0, 0, side, side};
    Picture picture;
    command::PaintFill(picture.Target(), fill, {0, 0, double(side), double(side)});
    return picture;
}

/// What the outline of an SVG stroke draws; the path runs in the space that `inverse` undoes.
class Agreement : public testing::TestWithParam<std::string> {};

TEST_P(Agreement, WithSvg) {
    const std::string content =
        "<defs><marker id='half' orient='auto' overflow='visible'><path d='M3 0L-1 3V0z'/></marker>"
        "<marker id='turned' orient='auto-start-reverse' overflow='visible' markerUnits='userSpaceOnUse'>"
        "<path d='M8 0L-2 6L0 0z'/></marker></defs><path fill='none' stroke='#000' d='" +
        std::string(kPath) + "' " + GetParam() + "/>";
    svg::Document document;
    ASSERT_TRUE(document.LoadText("<svg xmlns='http://www.w3.org/2000/svg'>" + content + "</svg>"));
    Picture drawn;
    ASSERT_TRUE(document.ForEachShape([&](const svg::Shape& shape) {
        svg::Omissions omissions;
        const CGE_OUTLINE pen = command::OutlineMapper().Map(shape.stroke, shape.transform, omissions);
        EXPECT_TRUE(omissions.Counts().empty());
        const MATRIX m = command::ToDocumentUnits(command::ToMatrix(shape.transform));
        const command::Polyline line = Line().Transformed(m);
        command::PaintOutline(drawn.Target(), pen, std::span(&line, 1));
    }));
    const Picture reference = Reference(content);
    EXPECT_GT(reference.Area(), 60);
    EXPECT_LT(drawn.DifferenceFrom(reference), 0.02 * reference.Area() + 4);
}

INSTANTIATE_TEST_SUITE_P(
    Strokes, Agreement,
    testing::Values("stroke-width='5'", "stroke-width='5' stroke-miterlimit='2'",
                    "stroke-width='6' stroke-linecap='round' stroke-linejoin='round'",
                    "stroke-width='6' stroke-linecap='square' stroke-linejoin='bevel'",
                    "stroke-width='5' transform='scale(.5 1.2)'",
                    "stroke-width='5' transform='rotate(-20) skewX(30) scale(.9 .8)'",
                    "stroke-width='4' stroke-dasharray='7 3 2 3'",
                    "stroke-width='6' stroke-dasharray='0 9' stroke-linecap='round'",
                    "stroke-width='3' marker-start='url(#half)' marker-end='url(#half)'",
                    "stroke-width='3' marker-start='url(#turned)' marker-end='url(#turned)'"));

TEST(StrokePainter, CutsLinesBackForArrowheads) {
    CGE_ARROWHEAD head;
    head.lineEnd = -2000;
    head.steps = {{kArrowMove, {-1000, 0}, {}, {}}, {kArrowLine, {-2000, 3000}, {}, {}}};
    CGE_OUTLINE pen;
    pen.type = OutlineSolid;
    pen.width = static_cast<int>(4 * command::kUnitsPerPixel);
    pen.rightArrow = SUDIRegisterArrow(head.ToBlock());
    const command::Polyline line{{Unit(5, 30), Unit(50, 30)}, false};
    const auto draw = [&] {
        Picture picture;
        command::PaintOutline(picture.Target(), pen, std::span(&line, 1));
        return picture;
    };
    const Picture plain = draw();
    EXPECT_EQ(plain.AlphaAt(40, 30), 255);
    EXPECT_EQ(plain.AlphaAt(49, 30), 0) << "cut back by two widths";
    EXPECT_EQ(plain.AlphaAt(42, 19), 255) << "left is up; as wide as the line";
    EXPECT_EQ(plain.AlphaAt(42, 41), 0);
    pen.SetRightArrowAttributes({.flags = kArrowMirrorAcross});
    EXPECT_EQ(draw().AlphaAt(42, 41), 255);
    pen.SetRightArrowAttributes({.xOffset = 1000, .rotation = 180'000'000});
    EXPECT_EQ(draw().AlphaAt(58, 30), 255) << "turned, then moved on";
    pen.type = OutlineNone;
    EXPECT_EQ(draw().Area(), 0);
}

TEST(StrokePainter, SurvivesDamagedRecords) {
    CGE_OUTLINE pen;
    pen.type = OutlineDotDash;
    pen.width = 5000;
    pen.dotDash.count = 60000;
    pen.dotDash.element = {-5, 3, 0, -1};
    pen.dotLength = 4'000'000'000;
    pen.leftArrow = MEMMANAlloc(3, true);
    const command::Polyline lines[] = {Line(), {}, {{Unit(1, 1)}, true}, {{Unit(3, 3), Unit(3, 3)}, false}};
    Picture picture;
    for (const int stretch : {0, -100, 32767}) {
        pen.nibStretch = static_cast<std::int16_t>(stretch);
        command::PaintOutline(picture.Target(), pen, lines);
        EXPECT_EQ(cairo_status(&picture.Target()), CAIRO_STATUS_SUCCESS);
    }
    MEMMANFree(pen.leftArrow);
    // More dashes than can be told apart are one line.
    EXPECT_EQ(command::CutIntoDashes(Line(), std::vector<double>{1e-9, 1e-9}, 0).size(), 1u);
}

TEST(Polyline, JoinsTheDashesOfClosedLines) {
    const command::Polyline square{{{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true};
    const auto dashes = command::CutIntoDashes(square, std::vector<double>{3.0, 2.0}, 0);
    ASSERT_EQ(dashes.size(), 3u);  // 0-3, 5-8, 10-13, 15-16 and on
    EXPECT_EQ(dashes[0].points, (std::vector<VECTOR2D>{{4, 1}, {4, 4}}));
    EXPECT_EQ(dashes[2].points, (std::vector<VECTOR2D>{{0, 1}, {0, 0}, {3, 0}}));
    EXPECT_EQ(command::Cut(square, 15, 18).points, (std::vector<VECTOR2D>{{0, 1}, {0, 0}, {0, -2}}));
}

}  // namespace
