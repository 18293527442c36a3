#include "fom/outline_mapping.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "fom/dash_mapping.h"

#include "svg/document.h"

namespace {

struct Mapped {
    CGE_OUTLINE pen;
    svg::Omissions omissions;
};

/// The outline of a line with these attributes, in a drawing with these definitions.
Mapped PenOf(const std::string& attributes, const std::string& definitions = {}) {
    const std::string text = "<svg xmlns='http://www.w3.org/2000/svg' width='200' height='100'><defs>" +
                             definitions + "</defs><path d='M0 0h9' fill='none' " + attributes + "/></svg>";
    Mapped result;
    svg::Document document;
    EXPECT_TRUE(document.LoadText(text));
    EXPECT_TRUE(document.ForEachShape([&](const svg::Shape& shape) {
        ASSERT_NE(shape.stroke.paint.kind, svg::Paint::Kind::None);
        result.pen = command::OutlineMapper().Map(shape.stroke, shape.transform, result.omissions);
    }));
    return result;
}

TEST(OutlineMapping, SaysPlainStrokes) {
    const auto [pen, omissions] = PenOf(
        "stroke='#123456' stroke-width='3' stroke-linecap='square' "
        "stroke-linejoin='bevel' stroke-miterlimit='2'");
    CGE_OUTLINE expected;
    expected.type = 2;
    expected.width = 7938;  // 3 / 96 inch
    expected.endCaps = 2;
    expected.join = 2;
    expected.SetMiterLimit(60'000'000);
    expected.color.MakeRGB(0x12, 0x34, 0x56);
    EXPECT_EQ(CGE_OUTLINE::CompareTo(pen, expected, false), 0);
    EXPECT_TRUE(omissions.Counts().empty());
    EXPECT_EQ(PenOf("stroke='red'").pen.GetMiterLimit(), 28'955'024);
    EXPECT_EQ(PenOf("stroke='red' stroke-miterlimit='1'").pen.GetMiterLimit(), 180'000'000);
}

TEST(OutlineMapping, FitsPenToTransform) {
    const auto fit = [](const std::string& transform, double width = 1, const char* more = "") {
        return PenOf("stroke='red' " + std::string(more) + " stroke-width='" + std::to_string(width) +
                     "' transform='" + transform + "'")
            .pen;
    };
    struct Case {
        const char* transform;
        int width, stretch, angle;
    };
    for (const Case& c : {Case{"rotate(30) translate(9 9)", 2646, 100, 0},
                          {"scale(-3 3)", 7938, 100, 0},
                          {"rotate(60) scale(.37)", 979, 100, 0},
                          {"scale(4 1)", 10583, 25, -90'000'000},
                          {"scale(1 2)", 5292, 50, 0},
                          {"rotate(20) scale(1 2)", 5292, 50, 20'000'000},
                          {"scale(0)", 1, 100, 0},
                          {"scale(1 0.001)", 2646, 1, -90'000'000}}) {
        const CGE_OUTLINE pen = fit(c.transform);
        EXPECT_EQ(pen.width, c.width) << c.transform;
        EXPECT_EQ(pen.nibStretch, c.stretch) << c.transform;
        EXPECT_EQ(pen.nibAngle, c.angle) << c.transform;
    }
    // Rounded once: a hundredth of a unit, enlarged, is not lost, and 1 / 96 of an inch is exact again.
    EXPECT_EQ(fit("scale(100000)", 0.001).width, 264583);
    EXPECT_EQ(fit("scale(3e5)", 1).width, 793'750'000);
    EXPECT_EQ(fit("scale(3e6)", 1).width, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(fit("scale(1e-9)", 1).width, 1);
    EXPECT_EQ(fit("scale(5 2)", 2, "vector-effect='non-scaling-stroke'").width, 5292);
    EXPECT_EQ(fit("scale(5 2)", 2, "vector-effect='non-scaling-stroke'").nibStretch, 100);
}

TEST(OutlineMapping, TakesNumbersThatNoDrawingHas) {
    const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
    svg::Omissions omissions;
    svg::Stroke stroke;
    stroke.paint.kind = svg::Paint::Kind::Solid;
    const auto width = [&](double number, const svg::Matrix& m) {
        stroke.width = number;
        return command::OutlineMapper().Map(stroke, m, omissions).width;
    };
    EXPECT_EQ(width(-5, {}), 1);
    EXPECT_EQ(width(nan, {}), 1);
    EXPECT_EQ(width(inf, {}), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(width(1, {nan, 0, 0, 1, 0, 0}), 2646);
    EXPECT_EQ(width(1, {1, inf, 0, 1, 0, 0}), 2646);
    EXPECT_EQ(width(1, {1, 0, 0, 1, inf, nan}), 2646);
    EXPECT_EQ(omissions.Of("stroke coordinates out of range"), 2u);
    stroke.dashes.assign(400, 1e308);
    stroke.dashOffset = nan;
    EXPECT_EQ(command::OutlineMapper().Map(stroke, {}, omissions).dotDash.count, 10);
    for (const double bad : {-1.0, nan, -inf}) {
        stroke.dashes = {bad, 1};
        EXPECT_EQ(command::OutlineMapper().Map(stroke, {}, omissions).type, OutlineSolid);
    }
    EXPECT_EQ(omissions.Of("dashes"), 3u);
}

TEST(OutlineMapping, FindsDotLengths) {
    struct Case {
        std::vector<double> lengths;
        std::uint32_t dotLength;
        std::vector<int> dots;
    };
    svg::Omissions omissions;
    for (const Case& c : {Case{{3000, 1000}, 1000, {3, 1}},
                          {{6000, 4000}, 2000, {3, 2}},
                          {{14111, 7056}, 7056, {2, 1}},             // 5.33 and 2.67 as they are written
                          {{100, 100, 250, 100}, 50, {2, 2, 5, 2}},  //
                          {{0, 5000}, 5000, {0, 1}},                 // dots, with round caps
                          {{0.2, 100000}, 1, {1, 100000}},           // a sliver stays one
                          {{3.4, 2.7}, 1, {3, 3}},
                          {{9990, 1000}, 1000, {10, 1}}}) {
        const auto pattern = command::MapDashes(c.lengths, omissions);
        ASSERT_TRUE(pattern);
        EXPECT_EQ(pattern->dotLength, c.dotLength) << c.lengths[0];
        EXPECT_EQ(std::vector<int>(pattern->dots.element.begin(),
                                   pattern->dots.element.begin() + pattern->dots.count),
                  c.dots)
            << c.lengths[0];
    }
    EXPECT_TRUE(omissions.Counts().empty());
    // Dashes grow with the width.
    const CGE_OUTLINE pen = PenOf("stroke='red' stroke-dasharray='3 1' transform='scale(2 1)'").pen;
    EXPECT_EQ(pen.type, 4);
    EXPECT_EQ(pen.dotLength, 5292u);
}

TEST(OutlineMapping, SeesPhases) {
    const std::vector<double> lengths{3, 1};
    for (const double hidden : {0.0, 4.0, -8.0, 4.01, 3.99})
        EXPECT_FALSE(command::IsPhaseVisible(lengths, hidden)) << hidden;
    for (const double visible : {1.0, -2.0, 4.1, 1e6 + 2})
        EXPECT_TRUE(command::IsPhaseVisible(lengths, visible)) << visible;
}

/// A barb to the right of the line, for a marker at that end.
std::vector<CGE_ARROWSTEP> BarbOf(const std::string& marker, const char* end, const std::string& stroke) {
    const auto [pen, omissions] = PenOf(
        "stroke='#000' marker-" + std::string(end) + "='url(#m)' " + stroke,
        "<marker id='m' overflow='visible' " + marker + "><path d='M1 0L0 2C1 1 .5 .5 0 0z'/></marker>");
    const bool atStart = std::string(end) == "start";
    EXPECT_EQ(atStart ? pen.rightArrow : pen.leftArrow, nullptr);
    const auto head = CGE_ARROWHEAD::FromBlock(atStart ? pen.leftArrow : pen.rightArrow);
    EXPECT_EQ(omissions.Of("marker with a fixed angle"), marker.find("orient") == std::string::npos);
    return head && head->lineEnd == 0 ? head->steps : std::vector<CGE_ARROWSTEP>();
}

TEST(OutlineMapping, TurnsMarkersIntoArrowheads) {
    const auto barb = [](int x, int y) {
        return std::vector<CGE_ARROWSTEP>{{kArrowMove, {x, 0}, {}, {}},
                                          {kArrowLine, {0, 2 * y}, {}, {}},
                                          {kArrowCurve, {0, 0}, {x, y}, {x / 2, y / 2}},
                                          {kArrowClose, {}, {}, {}}};
    };
    // y points to the left of the line as it runs on; at the start it runs on against the path.
    EXPECT_EQ(BarbOf("orient='auto'", "end", ""), barb(1000, -1000));
    EXPECT_EQ(BarbOf("orient='auto-start-reverse'", "end", ""), barb(1000, -1000));
    EXPECT_EQ(BarbOf("orient='auto'", "start", ""), barb(-1000, 1000));
    EXPECT_EQ(BarbOf("orient='auto-start-reverse'", "start", ""), barb(1000, -1000));
    EXPECT_EQ(BarbOf("", "end", ""), barb(1000, -1000));
    EXPECT_EQ(BarbOf("orient='auto'", "end", "stroke-width='7' transform='scale(3)'"), barb(1000, -1000));
    EXPECT_EQ(BarbOf("orient='auto' markerUnits='userSpaceOnUse'", "end", "stroke-width='0.5'"),
              barb(2000, -2000));
}

TEST(OutlineMapping, MakesArrowheadsOnce) {
    svg::Marker marker;
    marker.fillIsStroke = true;
    using Kind = svg::PathStep::Kind;
    marker.outline = {
        {Kind::Move, {}, {}, {1e300, -1e300}}, {Kind::Line, {}, {}, {1, 2}}, {Kind::Close, {}, {}, {}}};
    command::ArrowheadCache cache;
    svg::Omissions omissions;
    const HMEM first = cache.Find(marker, command::LineEnd::End, 1, omissions);
    const auto head = CGE_ARROWHEAD::FromBlock(first);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->steps[0].to,
              (POINT{std::numeric_limits<std::int32_t>::max(), -head->steps[0].to.x * -1}));
    EXPECT_EQ(cache.Find(marker, command::LineEnd::End, 8, omissions), first) << "measured in line widths";
    EXPECT_NE(cache.Find(marker, command::LineEnd::Start, 1, omissions), first);
    EXPECT_EQ(command::ArrowheadCache().Find(marker, command::LineEnd::End, 1, omissions), first)
        << "one block for equal heads of all drawings";
    // Lines of ever new widths do not make arrowheads without end.
    marker.strokeWidthUnits = false;
    const std::size_t room = command::ArrowheadCache::kMostSteps / marker.outline.size();
    std::size_t made = 0;
    for (std::size_t i = 1; i <= room + 5; ++i)
        made += cache.Find(marker, command::LineEnd::End, 1 + double(i) / 8, omissions) != nullptr;
    EXPECT_EQ(made, room);
    EXPECT_EQ(omissions.Of("arrowheads of too many widths"), 5u);
    EXPECT_NE(cache.Find(marker, command::LineEnd::End, 1.5, omissions), nullptr) << "made before";
    marker.strokeWidthUnits = true;
    EXPECT_EQ(cache.Find(marker, command::LineEnd::End, 1, omissions), first);
    marker.outline.clear();
    for (int i = 1; i <= 3; ++i) {
        command::ArrowheadCache().Find(marker, command::LineEnd::End, i, omissions);
        EXPECT_EQ(omissions.Of("marker"), static_cast<std::size_t>(i));
    }
}

}  // namespace
