#include <functional>
#include <numbers>
#include <tuple>

#include "drawing.h"
#include "svg/declarations.h"
#include "svg/length.h"
#include "svg/matrix.h"
#include "svg/scanner.h"
#include "svg/viewport.h"

namespace {

TEST(Values, NumbersStopWhereTheyEnd) {
    const std::tuple<const char*, double, const char*> cases[] = {
        {"1.5.5", 1.5, ".5"}, {"-.5e1x", -5, "x"}, {"+3", 3, ""},      {"5em", 5, "em"},
        {"1-2", 1, "-2"},     {"2e", 2, "e"},      {"1e+2,", 100, ","}};
    for (const auto& [text, expected, rest] : cases) {
        svg::Scanner in(text);
        double value = 0;
        ASSERT_TRUE(in.Number(value)) << text;
        EXPECT_EQ(value, expected) << text;
        EXPECT_EQ(in.Rest(), rest) << text;
    }
    for (const char* text : {"", "-", "+-1", ".", "-.", "e5", "inf", "-nan", "NaN", "1e999", " 1"}) {
        svg::Scanner in(text);
        double value = 7;
        EXPECT_FALSE(in.Number(value)) << text;
        EXPECT_EQ(in.Rest(), text);
    }
}

TEST(Values, LengthsTakeTheirUnits) {
    const std::pair<const char*, double> cases[] = {
        {"12", 12},     {" 12PX ", 12}, {"1in", 96},    {"72pt", 96}, {"6pc", 96},
        {"25.4mm", 96}, {"2.54cm", 96}, {"101.6Q", 96}, {"2em", 40},  {"2ex", 20},
        {"2rem", 32},   {"-25%", -50},  {"1 em", 20}};
    for (const auto& [text, expected] : cases) {
        const auto length = svg::ParseLength(text);
        ASSERT_TRUE(length.has_value()) << text;
        EXPECT_DOUBLE_EQ(length->Resolve(20, 200), expected) << text;
    }
    for (const char* text : {"", "em", "1furlong", "1px 2", "1,2", "1e999px", "%", "calc(1px)"})
        EXPECT_FALSE(svg::ParseLength(text).has_value()) << text;
    EXPECT_EQ(svg::ParseFraction(" 25% "), 0.25);
    EXPECT_EQ(svg::ParseFraction("25%%"), std::nullopt);
}

void ExpectMatrix(const char* text, const svg::Matrix& expected) {
    const auto found = svg::ParseTransform(text);
    ASSERT_TRUE(found.has_value()) << text;
    const svg::Matrix& m = *found;
    const double differences[] = {m.a - expected.a, m.b - expected.b, m.c - expected.c,
                                  m.d - expected.d, m.e - expected.e, m.f - expected.f};
    for (const double difference : differences)
        EXPECT_NEAR(difference, 0, 1e-12) << text;
}

TEST(Transforms, ApplyFromRightToLeft) {
    const double root = std::numbers::sqrt3 / 2;
    ExpectMatrix("", {});
    ExpectMatrix("none", {});
    ExpectMatrix("matrix(1 2,3,4 5 6)", {1, 2, 3, 4, 5, 6});
    ExpectMatrix("translate(3)", {1, 0, 0, 1, 3, 0});
    ExpectMatrix("translate(3-4)", {1, 0, 0, 1, 3, -4});
    ExpectMatrix(" scale ( 2 ) ", {2, 0, 0, 2, 0, 0});
    ExpectMatrix("scale(2,-1)", {2, 0, 0, -1, 0, 0});
    ExpectMatrix("rotate(30)", {root, 0.5, -0.5, root, 0, 0});
    ExpectMatrix("rotate(90,10,20)", {0, 1, -1, 0, 30, 10});
    ExpectMatrix("skewX(45)", {1, 0, 1, 1, 0, 0});
    ExpectMatrix("skewY(45)", {1, 1, 0, 1, 0, 0});
    ExpectMatrix("translate(10)scale(2),translate(1 1)", {2, 0, 0, 2, 12, 2});
    for (const char* text : {"scale", "scale()", "scale(1,2,3)", "rotate(1 2)", "translate(1", "move(1)",
                             "skewX(1 2)", "matrix(1 2 3 4 5)", "matrix(1 2 3 4 5 6 7)", "scale(2) junk",
                             "scale(1e300) scale(1e300)", "matrix(NaN 0 0 1 0 0)", "translate(1 , , 2)"})
        EXPECT_FALSE(svg::ParseTransform(text).has_value()) << text;
}

TEST(Transforms, OfShapesAccumulateAndBadOnesAreCounted) {
    const Drawing d(R"(<g transform='translate(10 20)'><rect width='1' height='1' transform='scale(3)'/>
        <rect width='1' height='1' transform='scale(x)'/></g>
        <svg x='5' y='50%' width='20' height='10' viewBox='0 0 10 10' preserveAspectRatio='xMaxYMin'>
        <rect width='50%' height='1'/></svg>)");
    ASSERT_EQ(d.items.size(), 3U);
    EXPECT_EQ(d[0].transform, (svg::Matrix{3, 0, 0, 3, 10, 20}));
    EXPECT_EQ(d[1].transform, svg::Matrix::Translation(10, 20));
    EXPECT_EQ(d[2].transform, svg::Matrix::Translation(15, 50));
    EXPECT_EQ(d.items[2].bounds->right, 5);
    EXPECT_EQ(d.Omitted("invalid transform"), 1U);
}

TEST(ViewBoxes, FitAsTheAspectSays) {
    const svg::ViewBox box{10, 10, 20, 10};
    const std::pair<const char*, svg::Matrix> cases[] = {
        {"", {2, 0, 0, 2, -20, 20}},
        {"xMidYMid meet", {2, 0, 0, 2, -20, 20}},
        {"xMinYMin", {2, 0, 0, 2, -20, -20}},
        {"xMaxYMax", {2, 0, 0, 2, -20, 60}},
        {"none", {2, 0, 0, 10, -20, -100}},
        {"xMidYMid slice", {10, 0, 0, 10, -180, -100}},
        {"xMinYMid slice", {10, 0, 0, 10, -100, -100}},
        {"xMaxYMid slice", {10, 0, 0, 10, -260, -100}},
    };
    for (const auto& [aspect, expected] : cases)
        EXPECT_EQ(svg::FitViewBox(box, 40, 100, aspect), expected) << aspect;
    EXPECT_TRUE(svg::ParseViewBox(" 0,0 1e1 , 2 ").has_value());
    for (const char* text : {"", "0 0 1", "0 0 -1 1", "0 0 1 1 1", "0 0 1 x", "0 0 1e999 1"})
        EXPECT_FALSE(svg::ParseViewBox(text).has_value()) << text;
}

std::string Declared(std::string_view text) {
    svg::DeclarationReader reader(text);
    std::string result;
    while (const auto found = reader.Next())
        result.append(found->name).append("=").append(found->value).append(found->important ? "!|" : "|");
    return result + std::to_string(reader.Malformed());
}

TEST(Declarations, KeepQuotesBracketsAndCommentsTogether) {
    EXPECT_EQ(Declared(" fill : red ;; stroke:none"), "fill=red|stroke=none|0");
    EXPECT_EQ(Declared("fill:url(a;b) blue;font:'x;y';k:v"), "fill=url(a;b) blue|font='x;y'|k=v|0");
    EXPECT_EQ(Declared("/* a;b */fill:/**/;fill:red/* c */;x:y"), "fill=|fill=red|x=y|0");
    EXPECT_EQ(Declared("fill:red ! IMPORTANT ;x:a!b"), "fill=red!|x=a!b|0");
    EXPECT_EQ(Declared("junk;fill:red;:x"), "fill=red|=x|1");
    EXPECT_EQ(Declared("fill:url(a;stroke:red"), "fill=url(a|stroke=red|0");
    EXPECT_EQ(Declared("/* never closed; fill:red"), "0");
}

TEST(StyleSheets, SpecificityComesBeforeOrder) {
    const Drawing d(R"(<style type='text/css'><![CDATA[<!-- #i{fill:#010101} .a.b{fill:#020202}
        .b{fill:#030303}.a{fill:#040404} rect{fill:#050505} *{fill:#060606} @import 'x.css';
        .c,,circle{fill:#070707} .d{fill:#080808;fill:bogus} .e{} .f{fill:#090909 -->]]></style>
        <style type='text/less'>rect{fill:red}</style>
        <g><rect width='1' height='1' class='a b' id='i'/><rect width='1' height='1' class='b a'/>
        <rect width='1' height='1' class='b'/><rect width='1' height='1' class='A'/><circle r='1'/>
        <ellipse rx='1'/><rect width='1' height='1' class='d'/></g>)");
    const char* const expected[] = {"#010101", "#020202", "#030303", "#050505",
                                    "#070707", "#060606", "#080808"};
    ASSERT_EQ(d.items.size(), std::size(expected)) << d.Reason();
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(d.Fill(i), expected[i]) << i;
    EXPECT_EQ(d.Omitted("unsupported selector"), 1U);
    EXPECT_EQ(d.Omitted("invalid value of fill"), 1U);
    EXPECT_EQ(d.Omitted("style language"), 1U);
}

TEST(Cascade, InheritReachesPropertiesThatDoNotInherit) {
    const Drawing d(R"(<g opacity='.5' style='fill:url(#none) currentColor;color:#0a0b0c'>
        <rect width='1' height='1' opacity='inherit' color='red'/>
        <rect width='1' height='1' style='opacity:unset;fill:unset'/>
        <rect width='1' height='1' fill-opacity='150%' opacity='-1'/></g>)");
    ASSERT_EQ(d.items.size(), 3U);
    EXPECT_EQ(d[0].layerOpacity, 0.25);
    EXPECT_EQ(d.Fill(0), "#ff0000");
    EXPECT_EQ(d[1].layerOpacity, 0.5);
    EXPECT_EQ(d.Fill(1), "#0a0b0c");
    EXPECT_EQ(d[2].fillOpacity, 1);
    EXPECT_EQ(d[2].layerOpacity, 0);
}

TEST(Gradients, RadiiBelowZeroCountAsNotGiven) {
    const Drawing d(
        "<radialGradient id='a' r='-1' fr='-2'><stop/><stop stop-color='red'/></radialGradient>"
        "<rect width='1' height='1' fill='url(#a)'/>");
    ASSERT_EQ(d.items.size(), 1U);
    ASSERT_EQ(d.Fill(0), "gradient");
    EXPECT_EQ(d[0].fill.gradient->r, 0.5);
    EXPECT_EQ(d[0].fill.gradient->fr, 0);
    EXPECT_EQ(d.Omitted("invalid paint coordinate"), 2U);
}

/// The texts of all levels.
std::string Doubling(int levels, const std::function<std::string(int)>& level) {
    std::string result;
    for (int i = 0; i < levels; ++i)
        result += level(i);
    return result;
}

TEST(Patterns, ContentThatMultipliesIsRefused) {
    const auto reason = [](const std::string& definitions) {
        return Drawing(definitions + "<rect width='9' height='9' fill='url(#p0)'/>").Reason();
    };
    const auto pattern = [](int i, const std::string& content) {
        return "<pattern id='p" + std::to_string(i) + "' width='1' height='1'>" + content + "</pattern>";
    };
    const std::string rect = "<rect width='1' height='1'/>";
    const auto painted = [](int i) {
        return "<rect width='1' height='1' style='fill:url(#p" + std::to_string(i) + ")'/>";
    };
    const auto twice = [&](int i) { return pattern(i, painted(i + 1) + painted(i + 1)); };
    EXPECT_EQ(reason(Doubling(10, twice) + pattern(10, rect)), "");
    EXPECT_NE(reason(Doubling(30, twice) + pattern(30, rect)).find("repeats"), std::string::npos);

    const auto handedDown = [&](int i) {
        return pattern(i, "<g fill='url(#p" + std::to_string(i + 1) + ")'>" + rect + rect + rect + "</g>");
    };
    EXPECT_EQ(reason(Doubling(5, handedDown) + pattern(5, rect)), "");
    EXPECT_NE(reason(Doubling(30, handedDown) + pattern(30, rect)).find("repeats"), std::string::npos);

    const auto used = [](int i) {
        const std::string next = "<use href='#g" + std::to_string(i + 1) + "'/>";
        return "<g id='g" + std::to_string(i) + "'>" + next + next + "</g>";
    };
    const std::string uses =
        "<defs>" + Doubling(30, used) + "<g id='g30'/></defs>" + pattern(0, "<use href='#g0'/>");
    EXPECT_NE(reason(uses).find("repeats"), std::string::npos);
}

}  // namespace
