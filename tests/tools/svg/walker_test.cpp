#include "drawing.h"

namespace {

TEST(Walker, ShowsWhatIsPaintedAndNothingElse) {
    const Drawing d(
        R"(<defs><path d='M0 0'/></defs><symbol><path d='M0 0'/></symbol><clipPath><path d='M0 0'/></clipPath>
        <path/><path d=''/><rect width='0' height='5'/><rect width='5'/><circle r='-1'/><ellipse rx='3'/>
        <line x2='9'/><polyline points=''/><polygon points='0,0 1,1'/>
        <text> <tspan>a</tspan> tail</text><text><tspan/></text>
        <x xmlns='urn:other'><path d='M0 0'/></x><p xmlns='urn:other' d='M0 0'/><path xmlns='urn:other' d='M0 0'/>
        <image xlink:href='http://127.0.0.1/x.png'/><foreignObject/><script/><path d='M0 0'><animate/></path>)");
    ASSERT_TRUE(d.good) << d.Reason();
    std::string names;
    for (const auto& item : d.items)
        names += std::string(item.shape.element) + ' ';
    EXPECT_EQ(names, "ellipse line polygon text tspan path ");
    EXPECT_EQ(d.Fill(1), "none");
    EXPECT_EQ(d[1].Line(), 4U);
    for (const char* name : {"external image", "foreign object", "script", "animation"})
        EXPECT_EQ(d.Omitted(name), 1U);
}

TEST(Walker, InvalidLengthsCountAsNotGiven) {
    const Drawing d(
        R"(<rect width='1e999' height='1'/><rect width='abc' height='1'/><rect width='1' height=''/>
        <rect width='-1' height='1'/><rect width='1e308in' height='1'/><circle r='-3'/><circle r='1 2'/>
        <ellipse rx='1px2' ry='x'/><g id='g'><rect width='x' height='1'/></g><use href='#g'/><use href='#g'/>
        <rect width='0' height='1'/><rect width='auto' height='1'/><circle r='-0'/><ellipse rx='auto'/>
        <rect id='place' x='abc' y='5' width='2' height='1'/><ellipse id='radius' rx='-1' ry='2'/>
        <line id='end' x1='1' x2='?'/><g visibility='hidden'><rect width='x' height='1'/></g>
        <use href='#place' x='?' y='1'/><svg width='-5' viewBox='0 0 2 1'><rect width='1' height='1'/></svg>)");
    std::string ids;
    for (const auto& item : d.items)
        ids += std::string(item.shape.id) + ' ';
    EXPECT_EQ(ids, "place radius end place  ");
    EXPECT_EQ(d.Omitted("shape without valid size"), 10U)
        << "one of them where it stands and for the first use";
    EXPECT_EQ(d.Omitted("invalid length"), 6U);
    EXPECT_EQ(d.items[0].bounds, (svg::Rect{0, 5, 2, 6}));
    EXPECT_EQ(d.items[1].bounds, (svg::Rect{-2, -2, 2, 2}));
    EXPECT_EQ(d[3].transform, svg::Matrix::Translation(0, 1));
}

TEST(Walker, SwitchTakesTheFirstThatFits) {
    const Drawing d(
        R"(<switch><foreignObject requiredExtensions='x'/><g requiredExtensions='y'><path d='M0 0'/></g>
        <path id='de' systemLanguage='de, fr' d='M0 0'/><path id='yes' systemLanguage='de, en-GB' d='M0 0'/>
        <path id='late' d='M0 0'/></switch>)");
    ASSERT_EQ(d.items.size(), 1U);
    EXPECT_EQ(d[0].id, "yes");
}

TEST(Walker, UseInheritsFromWhereItStands) {
    const Drawing d(R"(<defs><g id='g'><path d='M0 0h1'/><path d='M0 0h1' fill='red'/></g></defs>
        <symbol id='s' viewBox='0 0 10 10'><rect width='1' height='1'/></symbol>
        <g fill='#010203' transform='scale(2)'><use xlink:href='#g' x='5' transform='translate(1 1)'/></g>
        <use href='#s' width='20' height='40'/><use href='#none'/><use/>)");
    ASSERT_EQ(d.items.size(), 3U);
    EXPECT_EQ(d.Fill(0), "#010203");
    EXPECT_EQ(d.Fill(1), "#ff0000");
    EXPECT_TRUE(!d[0].instances.empty());
    EXPECT_EQ(d[0].transform, (svg::Matrix{2, 0, 0, 2, 12, 2}));
    EXPECT_EQ(d[2].transform, (svg::Matrix{2, 0, 0, 2, 0, 10}));
    EXPECT_EQ(d.Omitted("unresolved reference"), 2U);
}

TEST(Walker, RefusesCirclesDepthAndMultiplication) {
    EXPECT_NE(Drawing("<g id='a'><use href='#a'/></g>").Reason().find("circle"), std::string::npos);
    const Drawing pair(
        "<defs><g id='a'>\n<use href='#b'/></g><g id='b'>\n<use href='#a'/></g></defs><use href='#a'/>");
    EXPECT_NE(pair.Reason().find("circle"), std::string::npos);
    EXPECT_EQ(pair.document.GetError().line, 4U);

    std::string deep;
    for (int i = 0; i < 1000000; ++i)
        deep += "<g>";
    for (int i = 0; i < 1000000; ++i)
        deep += "</g>";
    EXPECT_NE(Drawing(deep).Reason().find("1024"), std::string::npos);

    std::string laughs = "<defs><path id='l0' d='M0 0'/>";
    for (int i = 1; i < 12; ++i) {
        laughs += "<g id='l" + std::to_string(i) + "'>";
        for (int k = 0; k < 10; ++k)
            laughs += "<use href='#l" + std::to_string(i - 1) + "'/>";
        laughs += "</g>";
    }
    EXPECT_NE(Drawing(laughs + "</defs><use href='#l11'/>").Reason().find("1000000"), std::string::npos);
}

TEST(Walker, NeedsAnSvgRootInAnyPrefix) {
    svg::Document document;
    EXPECT_FALSE(document.LoadText("<html><svg/></html>", "page.html"));
    EXPECT_EQ(document.GetError().what, "page.html");
    EXPECT_NE(document.GetError().reason.find("'html'"), std::string::npos);
    EXPECT_FALSE(document.LoadText("<svg xmlns='urn:other'/>"));
    std::size_t count = 0;
    const auto visit = [&](const svg::Shape&) { ++count; };
    EXPECT_TRUE(document.LoadText(
        "<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:path d='M0 0'/><path d='M0 0'/></s:svg>"));
    EXPECT_TRUE(document.ForEachShape(visit));
    EXPECT_EQ(count, 1U);
    EXPECT_TRUE(document.LoadText(
        "<!DOCTYPE svg [<!ENTITY n 'http://www.w3.org/2000/svg'>]><svg xmlns='&n;'><path d='M0 0'/></svg>"));
    EXPECT_TRUE(document.ForEachShape(visit));
    EXPECT_EQ(count, 2U);
}

svg::Rect BoundsOf(const std::string& element) {
    const Drawing d(element);
    return d.items.empty() ? svg::Rect{-9, -9, -9, -9} : d.items[0].bounds.value_or(svg::Rect{});
}

void ExpectRect(const svg::Rect& rect, double left, double top, double right, double bottom) {
    EXPECT_NEAR(rect.left, left, 1e-9);
    EXPECT_NEAR(rect.top, top, 1e-9);
    EXPECT_NEAR(rect.right, right, 1e-9);
    EXPECT_NEAR(rect.bottom, bottom, 1e-9);
}

TEST(ShapeBounds, CurvesCountWithTheirExtrema) {
    ExpectRect(BoundsOf("<path d='M0,0C0 10 10 10 10 0'/>"), 0, 0, 10, 7.5);
    ExpectRect(BoundsOf("<path d='m0 0q5 10 10 0t10 0z l-1-1'/>"), -1, -5, 20, 5);
    ExpectRect(BoundsOf("<path d='M0 0c0 10 10 10 10 0s10-10 10 0'/>"), 0, -7.5, 20, 7.5);
    ExpectRect(BoundsOf("<path d='M10 0A10 10 0 01-10 0'/>"), -10, 0, 10, 10);
    ExpectRect(BoundsOf("<path d='M0 0a1 1 0 1 0 20 0'/>"), 0, 0, 20, 10);
    ExpectRect(BoundsOf("<path d='M0 10A10 5 90 1 1 .0001 10'/>"), -4.99995, -10, 5.00005, 10);
    ExpectRect(BoundsOf("<path d='M.5.5-1e1 2H+7V1junk L99 99'/>"), -10, 0.5, 7, 2);
}

TEST(ShapeBounds, BasicShapesAndUnits) {
    ExpectRect(BoundsOf("<rect x='1in' y='10%' width='50%' height='2em' font-size='10'/>"), 96, 10, 196, 30);
    ExpectRect(BoundsOf("<circle cx='5' r='2'/>"), 3, -2, 7, 2);
    ExpectRect(BoundsOf("<ellipse cy='5' rx='2' ry='1'/>"), -2, 4, 2, 6);
    ExpectRect(BoundsOf("<polygon points='1,2 3 -4,5'/>"), 1, -4, 3, 2);
    EXPECT_FALSE(Drawing("<path d='M1e308 0l1e308 0'/>").items.at(0).bounds.has_value());
    const Drawing cut(R"(<path d='M0 0L5'/><path d='M0 0 1 1 1e999'/><path d='x M'/><path d=' M0 0h1z '/>
        <polygon points='1,2 3'/><polyline points='1,2 3,4 '/>)");
    EXPECT_EQ(cut.unbounded.Of("malformed path data"), 3U);
    EXPECT_EQ(cut.unbounded.Of("malformed points"), 1U);
}

}  // namespace
