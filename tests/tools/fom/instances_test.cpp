#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "fom/demo_render.h"
#include "fom/instance_limits.h"
#include "fom/picture_difference.h"

#include "tools/fom/rewritten.h"

namespace {

using namespace testing_support;

constexpr const char* kDisputed = "drawn several times with different paints";

std::size_t CountOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

void ExpectSamePicture(std::string_view a, std::string_view b) {
    const TempFolder folder;
    const auto draw = [&](std::string_view text) {
        WriteText(folder / "a.svg", text);
        return command::RenderDrawing(folder / "a.svg", 200).picture;
    };
    const command::SurfacePointer one = draw(a), other = draw(b);
    ASSERT_TRUE(one && other) << b;
    EXPECT_TRUE(command::ComparePictures(*one, *other).IsIdentical()) << a << "\n" << b;
}

/// Checks a drawing that is painted from the document alone, with so many copies; and that each instance can
/// have a paint of its own.
std::string Repaint(const std::string& drawing, std::size_t copies) {
    const Rewritten result(drawing);
    EXPECT_EQ(result.ReasonCount(), 0u) << result.Text();
    EXPECT_EQ(result.Painted(), result.Document().ShapeCount());
    EXPECT_EQ(CountOf(result.Text(), "id='copy-"), copies) << result.Text();
    ExpectSamePicture(drawing, result.Text());
    const Rewritten again(result.Text());
    EXPECT_EQ(again.Painted(), result.Painted());
    ExpectSamePicture(drawing, again.Text());

    const auto colorOf = [](int i) {
        CLR_COLORSPEC color;
        color.MakeRGB(i % 5 * 50, i / 5 % 5 * 50, i / 25 * 9);
        return color;
    };
    int shapes = 0;
    const Rewritten motley(drawing, [&](WFillHandle& fill, WOutlineHandle& outline) {
        const CLR_COLORSPEC color = colorOf(shapes++);
        fill.SetToNoFill();
        fill.SetUniformColorspec(&color);
        outline.SetToNoOutline();
    });
    const Rewritten read(motley.Text());
    EXPECT_EQ(read.Document().ShapeCount(), static_cast<std::size_t>(shapes));
    for (int i = 0; i < shapes; ++i) {
        const CLR_COLORSPEC* color =
            read.Document().Shape(static_cast<std::size_t>(i)).fill.GetUniformColorspec();
        EXPECT_TRUE(color && *color == colorOf(i)) << i << "\n" << motley.Text();
    }
    return result.Text();
}

TEST(Instances, GetCopiesWherePaintsDiffer) {
    const std::string rect = "<rect id='r' width='9' height='9'/>";
    const auto uses = [](const std::string& attributes) {
        return "<use xlink:href='#r' " + attributes + "/>";
    };
    const std::string two = uses("fill='red'") + uses("x='20' fill='blue'");
    struct Case {
        std::string content;
        std::size_t copies;
    };
    for (const Case& c : {
             Case{"<defs>" + rect + "</defs>" + two, 1},
             // Alike ones share a copy; what stands for itself keeps the original.
             {"<defs>" + rect + "</defs>" + uses("fill='red'") + uses("x='20' fill='red'"), 0},
             {"<defs>" + rect + "</defs>" + two + "<g transform='translate(0 30)'>" + two + "</g>", 1},
             {"<g fill='lime'>" + rect + "</g>" + two, 2},
             {"<g id='r' color='lime'><rect width='9' height='9' fill='currentColor'/></g>" +
                  uses("x='20' color='red'"),
              0},
             {"<defs><rect id='r' width='9' height='9' fill='currentColor'/></defs>" + uses("color='lime'") +
                  uses("x='20' color='red'"),
              1},
             {"<defs><path id='r' d='M0 0l40 20v-9' stroke='red' stroke-width='10%'/></defs><svg width='50' "
              "viewBox='0 0 30 30'>" +
                  uses("") + "</svg>" + uses("stroke-width='3' x='99'"),
              1},
             // Nested, and nested ones that stand in what is copied.
             {"<defs>" + rect + "<g id='b'>" + uses("") + uses("x='15' fill='lime'") +
                  "</g></defs><use href='#b' fill='red'/><use xlink:href='#b' href='#b' y='30' fill='blue'/>",
              3},
             {"<g id='a'><g id='b'>" + rect + uses("x='12'") +
                  "</g><use href='#b' y='20' stroke='blue'/></g>"
                  "<use href='#a' x='60' fill='red'/>",
              6},
             {"<symbol id='r' viewBox='0 0 90 40' class='c'><circle cx='20' cy='20' r='20'/><path id='p' "
              "d='M50 0h30v30z' fill='#08f'/></symbol>" +
                  uses("width='60' height='30' fill='red'") + uses("width='30' height='90' x='60'"),
              1},
             // Identifiers, style sheets and what cannot be copied within; places that would be drawn.
             {"<g id='r'><linearGradient id='l'><stop stop-color='red'/><stop offset='1'/></linearGradient>"
              "<style>.c{stroke:#f0f}</style><rect id = \"q\" class='c' width='9' height='9'/><rect x='11' "
              "width='9' height='9' fill='url(#l)'/></g>" +
                  two,
              2},
             {"<switch>" + uses("visibility='hidden'") + rect +
                  "<g/></switch><switch><g requiredExtensions='x'/>" + rect + "<g/></switch>" + two,
              1},
         })
        Repaint(InSvg(c.content), c.copies);
    const std::string prefixed = Repaint(
        "<s:svg xmlns:s='http://www.w3.org/2000/svg' width='200' height='100'><s:g id='copy-'><s:rect id='r' "
        "width='9' height='9'/></s:g><s:use href='#r' x='30' fill='red'/></s:svg>",
        1);
    EXPECT_NE(prefixed.find("<s:g id='copy-'><s:defs><s:rect style="), std::string::npos) << prefixed;
    EXPECT_NE(prefixed.find("href='#copy2-1'"), std::string::npos);
}

TEST(Instances, StayWhereCopiesWouldNot) {
    const std::string group = "<defs><g id='g'><rect id='r' width='9' height='9'/></g></defs>";
    const std::string two = "<use href='#g' fill='red'/><use href='#g' x='20' fill='blue'/>";
    for (const char* rule : {"#r{opacity:.5}", "g>rect{opacity:.5}", "@media print{g{opacity:.5}}"}) {
        const std::string drawing = InSvg("<style>" + std::string(rule) + "</style>" + group + two);
        const Rewritten disputed(drawing);
        EXPECT_EQ(disputed.Painted(), 0u);
        EXPECT_EQ(disputed.Reasons(kDisputed), 2u);
        EXPECT_FALSE(disputed.Has("!important") || disputed.Has("copy-"));
    }
    // A rule that keeps only the outer element, and one that keeps the inner one.
    const std::string nested =
        "<defs><g id='g'><path id='p' d='M0 20h9v9z'/><use href='#r'/></g>"
        "<rect id='r' width='9' height='9'/></defs>";
    for (const char* rule : {"#p{opacity:.5}", "#r{opacity:.5}"}) {
        const std::string drawing = InSvg("<style>" + std::string(rule) + "</style>" + nested + two);
        const Rewritten partly(drawing);
        const bool outer = rule[1] == 'p';
        EXPECT_EQ(partly.Painted(), outer ? 0u : 2u) << partly.Text();
        EXPECT_EQ(partly.Reasons(kDisputed), outer ? 4u : 2u);
        EXPECT_EQ(CountOf(partly.Text(), "id='copy-"), outer ? 0u : 1u);
        ExpectSamePicture(drawing, partly.Text());
    }
    // The mask shows the original.
    const std::string masked =
        InSvg(group + "<mask id='m'><use href='#g' fill='white'/></mask><g mask='url(#m)'>" + two + "</g>");
    EXPECT_EQ(Rewritten(masked).Painted(), 2u);
    ExpectSamePicture(masked, Rewritten(masked).Text());
}

TEST(Instances, AreBounded) {
    // Copies of 1 MiB each, for 16 paints of each of 5 elements.
    std::string drawing;
    for (char id = 'a'; id < 'f'; ++id) {
        drawing += "<defs><g id='" + std::string(1, id) + "'><title>" + std::string(1 << 20, 'x') +
                   "</title><path d='M0 0h9v9z'/></g></defs>";
        for (int i = 0; i < 16; ++i)
            drawing += "<use href='#" + std::string(1, id) + "' fill='#0000" + std::to_string(10 + i) + "'/>";
    }
    const Rewritten result(InSvg(drawing));
    EXPECT_EQ(result.Painted(), 67u);
    EXPECT_EQ(result.Reasons("copies beyond 64 MiB"), 13u);
    EXPECT_LE(result.Text().size(), command::InstanceLimits::kMostBytes + drawing.size() + 100'000);
}

TEST(Instances, KeepTheEncoding) {
    const std::string drawing =
        InSvg("<g><g id='g'><text>\xC4\x80</text></g></g><use href='#g' fill='red'/>");
    const auto wide = [](std::string_view text) {
        std::string units = "\xFE\xFF";
        for (const char c : text) {
            // U+0100 is the only character beyond ASCII.
            if (c == '\xC4') units += std::string("\x01\x00", 2);
            if (static_cast<signed char>(c) >= 0) units += std::string{'\0', c};
        }
        return units;
    };
    EXPECT_EQ(Rewritten(wide(drawing)).Text(), wide(Rewritten(drawing).Text()));
    EXPECT_EQ(CountOf(Rewritten(drawing).Text(), "\xC4\x80"), 2u);
}

}  // namespace
