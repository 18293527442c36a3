#include <tuple>
#include <utility>

#include "drawing.h"

namespace {

using Dashes = std::vector<double>;

const svg::Stroke& Only(const Drawing& d) {
    static const svg::Stroke kNone{};
    return d.items.size() == 1 ? d[0].stroke : kNone;
}

Drawing Stroked(const std::string& style) {
    return Drawing("<path d='M0 0h9' style='font-size:10px;stroke:red;" + style + "'/>");
}

constexpr double kDiagonal = 158.11388300841898;  // of 200 by 100

TEST(Strokes, WidthsResolveOrKeepWhatWasInherited) {
    const std::pair<const char*, double> cases[] = {{"", 1},
                                                    {"stroke-width:2.5", 2.5},
                                                    {"stroke-width:1in", 96},
                                                    {"stroke-width:10%", kDiagonal / 10},
                                                    {"stroke-width:.5em", 5}};
    for (const auto& [style, width] : cases)
        EXPECT_DOUBLE_EQ(Only(Stroked(style)).width, width) << style;
    for (const char* bad : {"-1", "1e308in", "-0.001%", "2 furlongs", "x"}) {
        const Drawing d("<g stroke='red' stroke-width='7'><rect width='1' height='1' stroke-width='" +
                        std::string(bad) + "'/></g>");
        EXPECT_EQ(Only(d).width, 7) << bad;
        EXPECT_EQ(d.Omitted("invalid value of stroke-width"), 1U) << bad;
    }
    for (const char* style : {"stroke:none", "stroke-width:0", "stroke-width:0%", "stroke:context-stroke"})
        EXPECT_EQ(Only(Stroked(style)).paint.kind, svg::Paint::Kind::None) << style;
    const Drawing large = Stroked("stroke-width:1e308%;stroke-dasharray:1e308%");
    EXPECT_EQ(Only(large).width, 1);
    EXPECT_TRUE(Only(large).dashes.empty());
    EXPECT_EQ(large.Omitted("invalid value of stroke-width"), 1U);
}

TEST(Strokes, DashesAreEvenAndNeverNegative) {
    const std::tuple<const char*, Dashes, std::size_t> cases[] = {
        {"none", {}, 0},
        {"4", {4, 4}, 0},
        {"1,2 3", {1, 2, 3, 1, 2, 3}, 0},
        {" 1px , 10% 1em,0", {1, kDiagonal / 10, 10, 0}, 0},
        {"0 5", {0, 5}, 0},
        {"0,0 0", {}, 0},
        {"3 -1", {}, 1},
        {"3,,1", {}, 1},
        {"3 1,", {}, 1},
        {",3 1", {}, 1},
        {"3 pt", {}, 1},
        {"3 1e308in", {}, 1},
        {"nonsense", {}, 1}};
    for (const auto& [list, dashes, invalid] : cases) {
        const Drawing d = Stroked("stroke-dasharray:" + std::string(list) + ";stroke-dashoffset:-2em");
        ASSERT_EQ(Only(d).dashes.size(), dashes.size()) << list;
        for (std::size_t i = 0; i < dashes.size(); ++i)
            EXPECT_DOUBLE_EQ(Only(d).dashes[i], dashes[i]) << list;
        EXPECT_EQ(Only(d).dashOffset, dashes.empty() ? 0 : -20) << list;
        EXPECT_EQ(d.Omitted("invalid value of stroke-dasharray"), invalid) << list;
    }
    const auto repeated = [](int count) {
        std::string list;
        for (int i = 0; i < count; ++i)
            list += "1 2 ";
        return Stroked("stroke-dasharray:" + list + "3");
    };
    EXPECT_EQ(Only(repeated(400)).dashes.size(), 1602U);
    const Drawing huge = repeated(100000);
    EXPECT_EQ(Only(huge).dashes.size(), 1000U);
    EXPECT_EQ(huge.Omitted("dash array of more than 1000 entries"), 1U);
}

TEST(Strokes, LongDashesCannotBeRepeatedWithoutLimit) {
    std::string text = "<defs><path id='a' d='M0 0'/></defs><g stroke='red' stroke-dasharray='" +
                       std::string(1000000, '0') + "1'>";
    for (int i = 0; i < 1000; ++i)
        text += "<use href='#a'/>";
    EXPECT_NE(Drawing(text + "</g>").Reason().find("multiply"), std::string::npos);
}

TEST(Strokes, TakeTheirPaintAsFillsDo) {
    const Drawing d(R"(<linearGradient id='g'><stop stop-color='red'/><stop/></linearGradient>
        <linearGradient id='w'/><linearGradient id='unused'/>
        <g stroke='url(#g)' color='#010203' fill='none' stroke-linejoin='bevel' stroke-opacity='.5'>
        <line x2='9' fill='red'/><path d='M0 0' stroke='url(#none) currentColor' stroke-linecap='round'/>
        <text stroke='#abcdef' stroke-miterlimit='9'>a</text><path d='M0 0' stroke='url(x.svg#a)'/>
        <path d='M0 0' stroke='url(#w)' stroke-width='0' vector-effect='fixed-position non-scaling-stroke screen'/></g>
        <path d='M0 0' stroke='url(#g)' fill='url(#g)' vector-effect='bogus'/>
        <g vector-effect='non-scaling-stroke' stroke='red'><path d='M0 0'/><path d='M0 0' vector-effect='inherit'/></g>)");
    ASSERT_EQ(d.items.size(), 8U) << d.Reason();
    EXPECT_EQ(d.Fill(0), "none");
    ASSERT_EQ(d.StrokePaint(0), "gradient");
    EXPECT_EQ(d[0].stroke.paint.gradient, d[5].fill.gradient);
    EXPECT_EQ(d[0].stroke.join, svg::LineJoin::Bevel);
    EXPECT_EQ(d[0].stroke.opacity, 0.5);
    EXPECT_EQ(d.StrokePaint(1), "#010203");
    EXPECT_EQ(d[1].stroke.cap, svg::LineCap::Round);
    EXPECT_EQ(d.StrokePaint(2), "#abcdef");
    EXPECT_EQ(d[2].stroke.miterLimit, 9);
    EXPECT_EQ(d.StrokePaint(3), "none");
    EXPECT_EQ(d.StrokePaint(4), "none");
    EXPECT_FALSE(d[5].stroke.nonScaling);
    EXPECT_FALSE(d[6].stroke.nonScaling);
    EXPECT_TRUE(d[7].stroke.nonScaling);
    const std::pair<const char*, std::size_t> counts[] = {{"unresolved reference", 1},
                                                          {"external reference", 1},
                                                          {"unused definitions", 1},
                                                          {"invalid value of vector-effect", 1}};
    for (const auto& [name, count] : counts)
        EXPECT_EQ(d.Omitted(name), count) << name;
}

TEST(Strokes, BelowTheFillAreCountedWhereBothArePainted) {
    const std::tuple<const char*, std::size_t, std::size_t> cases[] = {{"stroke", 1, 0},
                                                                       {"markers stroke fill", 1, 0},
                                                                       {"normal", 0, 0},
                                                                       {"fill stroke", 0, 0},
                                                                       {"markers", 0, 0},
                                                                       {"stroke;fill:none", 0, 0},
                                                                       {"stroke;stroke:none", 0, 0},
                                                                       {"stroke over", 0, 1}};
    for (const auto& [value, counted, invalid] : cases) {
        const Drawing d = Stroked("paint-order:" + std::string(value));
        EXPECT_EQ(d.Omitted("paint-order"), counted) << value;
        EXPECT_EQ(d.Omitted("invalid value of paint-order"), invalid) << value;
    }
}

}  // namespace
