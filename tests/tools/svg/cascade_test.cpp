#include "drawing.h"

namespace {

TEST(Cascade, AttributesSheetStyleAndImportance) {
    const Drawing d(R"(<style>/* c */ @media print { rect { fill: pink } }
        rect { fill: #010101 } .b { fill: #020202 } rect.b.c { fill: #030303 } #i { fill: #040404; }
        * { stroke-width: 7 } g > rect { fill: red } .imp { fill: #050505 !important }</style>
        <rect width='1' height='1' fill='red'/>
        <rect width='1' height='1' class='b'/>
        <rect width='1' height='1' class=' c  b '/>
        <rect width='1' height='1' class='b c' id='i'/>
        <rect width='1' height='1' class='b' id='i' style='fill:#060606'/>
        <rect width='1' height='1' class='imp' style='fill:#070707'/>
        <rect width='1' height='1' class='imp' style='fill:#070707 ! important'/>)");
    ASSERT_EQ(d.items.size(), 7U);
    const char* const expected[] = {"#010101", "#020202", "#030303", "#040404",
                                    "#060606", "#050505", "#070707"};
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(d.Fill(i), expected[i]) << i;
    EXPECT_EQ(d.items[0].strokeWidth, 7);
    EXPECT_EQ(d.Omitted("unsupported selector"), 1U);
    EXPECT_EQ(d.Omitted("at-rule in style sheet"), 1U);
}

TEST(Cascade, InheritanceAndKeywords) {
    const Drawing d(R"(<g fill='lime' color='#111111' opacity='.5' fill-opacity='50%' fill-rule='evenodd'>
        <path d='M0 0h1'/>
        <path d='M0 0h1' fill='currentColor' color='#222222' opacity='0.5'/>
        <g fill='currentColor'><path d='M0 0h1' color='#333333'/></g>
        <path d='M0 0h1' style='fill:initial; fill-rule : inherit'/>
        <path d='M0 0h1' fill='nonsense' style='fill:rgb(1,2'/>
        <path d='M0 0h1' style="font-family:'a;b';fill:none"/></g>
        <g display='none'><path d='M0 0h1'/></g>
        <g visibility='hidden'><path d='M0 0h1'/><path d='M0 0h1' visibility='visible'/></g>)");
    ASSERT_EQ(d.items.size(), 7U);
    const char* const expected[] = {"#00ff00", "#222222", "#333333", "#000000", "#00ff00", "none", "#000000"};
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(d.Fill(i), expected[i]) << i;
    EXPECT_EQ(d[0].fillOpacity, 0.5);
    EXPECT_EQ(d[1].layerOpacity, 0.25);
    EXPECT_EQ(d[3].fillRule, svg::FillRule::EvenOdd);
    EXPECT_EQ(d.Omitted("invalid value of fill"), 2U);
    EXPECT_EQ(d.Omitted("group opacity"), 1U);
}

TEST(Cascade, ColorSyntaxes) {
    const std::pair<const char*, const char*> cases[] = {
        {"#fA0", "#ffaa00"},
        {"RGB( 255 , 0,16 )", "#ff0010"},
        {"rgb(100%, 50%,-5%)", "#ff8000"},
        {"hsl(120, 100%, 25%)", "#008000"},
        {"LightGoldenRodYellow", "#fafad2"},
        {"#010203 icc-color(cmyk, 1, 2)", "#010203"},
        {"url(#none) #040506", "#040506"},
        {"url(#none)", "none"},
        {"url(other.svg#x) red", "#ff0000"},
    };
    for (const auto& [text, fill] : cases) {
        const Drawing d("<rect width='1' height='1' fill='" + std::string(text) + "'/>");
        ASSERT_EQ(d.items.size(), 1U);
        EXPECT_EQ(d.Fill(0), fill) << text;
    }
    const Drawing d("<g fill='#f00a'><text>a</text></g><text fill='transparent'>b</text>");
    EXPECT_FLOAT_EQ(d[0].fill.color.alpha, 170 / 255.0F);
    EXPECT_EQ(d[1].fill.color.alpha, 0);
}

TEST(Cascade, RulesCannotMultiplyWithoutLimit) {
    std::string text = "<style>";
    for (int i = 0; i < 20000; ++i)
        text += "*{fill:red}";
    text += "</style>";
    for (int i = 0; i < 20000; ++i)
        text += "<g id='a'></g>";
    const Drawing d(text);
    EXPECT_FALSE(d.good);
    EXPECT_NE(d.Reason().find("multiply"), std::string::npos);
}

}  // namespace
