#include "drawing.h"

namespace {

const svg::Gradient& GradientOf(const Drawing& d, std::size_t i) {
    static const svg::Gradient kNone{};
    return d[i].fill.gradient != nullptr ? *d[i].fill.gradient : kNone;
}

constexpr std::string_view kShape = "<path d='M0 0h9v9z' fill='url(#a)'/>";

TEST(Gradients, InheritAttributesAndStopsByReference) {
    const Drawing d(R"(<defs color='#0a0b0c'><linearGradient id='stops' x1='5' color='#010203'>
          <stop offset='50%' stop-color='currentColor' style='stop-opacity:.5'/><stop offset='.2' style='stop-color:lime'/>
          <stop offset='7'/></linearGradient>
        <radialGradient id='b' xlink:href='#stops' spreadMethod='reflect' gradientUnits='userSpaceOnUse' cx='50%' r='1'/>
        <radialGradient id='a' xlink:href='#b' fy='3' gradientTransform='translate(4)'/>
        <linearGradient id='l' xlink:href='#b'/><linearGradient id='unused'/></defs>
        <path d='M0 0h9' fill='url(#a)'/><path d='M0 0h9' fill='url("#l") red'/><path d='M1 1h1' fill='url(#a)'/>)");
    ASSERT_TRUE(d.good) << d.Reason();
    const svg::Gradient& a = GradientOf(d, 0);
    EXPECT_EQ(a.kind, svg::Gradient::Kind::Radial);
    EXPECT_EQ(a.id, "a");
    EXPECT_EQ(a.spread, svg::Spread::Reflect);
    EXPECT_EQ(a.cx, 100);
    EXPECT_EQ(a.fx, 100);
    EXPECT_EQ(a.fy, 3);
    EXPECT_EQ(a.cy, 50);
    EXPECT_EQ(a.transform, svg::Matrix::Translation(4, 0));
    ASSERT_EQ(a.stops->size(), 3U);
    EXPECT_EQ((*a.stops)[0].color, (svg::Color{1, 2, 3, 0.5F}));
    EXPECT_EQ((*a.stops)[1].offset, 0.5);
    EXPECT_EQ((*a.stops)[1].color, (svg::Color{0, 255, 0, 1}));
    EXPECT_EQ((*a.stops)[2].offset, 1);
    EXPECT_EQ(GradientOf(d, 1).x1, 5);
    EXPECT_EQ(GradientOf(d, 1).x2, 200);
    EXPECT_EQ(GradientOf(d, 1).stops, a.stops);
    EXPECT_EQ(d[2].fill.gradient, &a);
    EXPECT_EQ(d.Omitted("unused definitions"), 1U);
}

TEST(Gradients, DegenerateOnesAreColorsOrNothing) {
    const auto fill = [](std::string_view gradient) {
        return Drawing(std::string(gradient) + std::string(kShape)).Fill(0);
    };
    EXPECT_EQ(fill("<linearGradient id='a'/>"), "none");
    EXPECT_EQ(fill("<linearGradient id='a'><stop stop-color='red'/></linearGradient>"), "#ff0000");
    EXPECT_EQ(fill("<linearGradient id='a' x2='0'><stop/><stop stop-color='red'/></linearGradient>"),
              "#ff0000");
    EXPECT_EQ(fill("<radialGradient id='a' r='0'><stop/><stop stop-color='red'/></radialGradient>"),
              "#ff0000");
    EXPECT_EQ(fill("<linearGradient id='a' x2='bad'><stop/><stop/></linearGradient>"), "gradient");
    EXPECT_EQ(fill("<clipPath id='a'/>"), "none");
    for (const char* start :
         {"<linearGradient id='a' gradientTransform='scale(0,1)'><stop/>",
          "<radialGradient id='a' gradientTransform='matrix(1 2 2 4 0 0)'><stop/><stop/>",
          "<pattern id='a' width='1' height='1' patternTransform='scale(1e-200)'><path/>"}) {
        const std::string name(start + 1, std::string_view(start).find(' ') - 1);
        const Drawing d(start + ("</" + name + ">") + std::string(kShape));
        ASSERT_EQ(d.items.size(), 1U) << d.Reason();
        EXPECT_EQ(d.Fill(0), "none") << start;
        EXPECT_EQ(d.Omitted("paint transform without inverse"), 1U);
    }
}

TEST(Gradients, CirclesAreErrorsEvenWhenUnused) {
    const Drawing d(
        "<linearGradient id='a' href='#b'/><radialGradient id='b' href='#c'/>\n<linearGradient id='c' "
        "href='#a'/>");
    EXPECT_FALSE(d.good);
    EXPECT_NE(d.Reason().find("circle"), std::string::npos);
    EXPECT_FALSE(Drawing("<pattern id='p' href='#p'/>").good);
}

std::string PatternBytes(std::string_view content) {
    const Drawing d(std::string(content) + "<path d='M0 0h1' fill='url(#a)'/>");
    EXPECT_TRUE(d.good) << d.Reason();
    return !d.items.empty() && d[0].fill.pattern != nullptr ? d[0].fill.pattern->content->bytes : "";
}

TEST(Patterns, EqualContentGivesEqualBytes) {
    const std::string one =
        PatternBytes(R"(<linearGradient id='g1'><stop offset='0' stop-color='red'/></linearGradient>
        <pattern id='a' width='9' height='9'><g><rect height='2' id='r' width='1' fill='url(#g1)'/></g>
        <text>x<tspan>y</tspan>z</text></pattern>)");
    const std::string two =
        PatternBytes(R"(<style>.k { fill : url(#other) }</style><pattern width='5' height='5' id='z'>
        <!-- note --><s:g xmlns:q='urn:q' xmlns:s='urn:s'/><g>  <rect q:edit='1' class='k' width='1' height=' 2 '/></g>
        <text>x<tspan>y</tspan>z</text><metadata>m</metadata></pattern><pattern id='a' href='#z'/>
        <linearGradient id='other'><stop style='stop-color:red' offset='0'/></linearGradient>)");
    EXPECT_EQ(
        one,
        "<g><rect fill=\"url(#r1)\" height=\"2\" width=\"1\"></rect></g><text>x<tspan>y</tspan>z</text><defs>"
        "<linearGradient id=\"r1\"><stop offset=\"0\" stop-color=\"red\"></stop></linearGradient></defs>");
    EXPECT_EQ(one, two);
    const std::string blue = PatternBytes(
        "<g fill='blue'><pattern id='a' width='9' height='9' stroke='red'><path/></pattern></g>");
    EXPECT_EQ(blue, "<g fill=\"blue\" stroke=\"red\"><path></path></g>");
    EXPECT_EQ(PatternBytes("<pattern id='a' width='9' height='9'/>"), "");
    EXPECT_EQ(PatternBytes("<pattern id='a' width='9'><path/></pattern>"), "");
}

TEST(Patterns, ContentThatPaintsWithItselfIsAnError) {
    const auto reason = [](const std::string& content) {
        return Drawing("<pattern id='a' width='1' height='1'>" + content + "</pattern>" + std::string(kShape))
            .Reason();
    };
    EXPECT_NE(reason("<path fill='url(#a)'/>").find("itself"), std::string::npos);
    EXPECT_NE(reason("<g id='g'><use href='#g'/></g>").find("itself"), std::string::npos);
    EXPECT_NE(reason("<path style='stroke:url(#b)'/></pattern><pattern id='b' href='#c'/><pattern "
                     "id='c'><use href='#u'/>"
                     "</pattern><g id='u' fill='url(#a)'/><pattern>")
                  .find("itself"),
              std::string::npos);
    EXPECT_EQ(reason("<g id='g'/><use href='#g'/><use href='#g'/>"), "");

    std::string many = "<defs><g id='big'><path d='" + std::string(100000, ' ') + "M0" +
                       std::string(100000, '0') + "'/></g>";
    for (int i = 0; i < 50; ++i) {
        many += "<pattern id='p" + std::to_string(i) + "' width='1' height='1'><use href='#big'/></pattern>";
    }
    many += "</defs>";
    for (int i = 0; i < 50; ++i)
        many += "<path d='M0 0' fill='url(#p" + std::to_string(i) + ")'/>";
    EXPECT_NE(Drawing(many).Reason().find("repeats"), std::string::npos);
}

TEST(Patterns, OneEmbeddedImageIsDecoded) {
    const auto pattern = [](std::string_view href) {
        return "<pattern id='a' width='1' height='1'><g transform='scale(2)'><image x='3' width='4' "
               "height='5' xlink:href='" +
               std::string(href) + "'/></g></pattern>" + std::string(kShape);
    };
    const Drawing png(pattern("data:;base64,iVBO\nRw0KGgo="));
    ASSERT_TRUE(png.good) << png.Reason();
    ASSERT_TRUE(png[0].fill.pattern->content->image.has_value());
    const svg::PatternImage& image = *png[0].fill.pattern->content->image;
    EXPECT_EQ(image.mediaType, "image/png");
    EXPECT_EQ(image.bytes, "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(image.x, 3);
    EXPECT_EQ(image.width, 4);
    EXPECT_EQ(image.transform, svg::Matrix::Scale(2, 2));
    EXPECT_FALSE(Drawing(pattern("data:image/png;base64,AAAA")).good);
    EXPECT_FALSE(Drawing(pattern("data:image/png;base64,iVB$")).good);
    EXPECT_EQ(Drawing(pattern("data:image/jpeg,%FF%D8%FFx"))[0].fill.pattern->content->image->mediaType,
              "image/jpeg");
    const Drawing external(pattern("file:///etc/passwd"));
    EXPECT_EQ(external.Omitted("external image"), 1U);
    EXPECT_FALSE(external[0].fill.pattern->content->image.has_value());
}

}  // namespace
