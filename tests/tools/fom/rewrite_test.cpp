#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/base/temp_data.h"

#include "fom/demo_render.h"
#include "fom/picture_difference.h"
#include "fom/svg_content.h"
#include "fom/svg_number.h"

#include "tools/fom/rewritten.h"

namespace {

using namespace testing_support;

CLR_COLORSPEC Rgb(int r, int g, int b) {
    CLR_COLORSPEC color;
    color.MakeRGB(r, g, b);
    return color;
}

constexpr const char* kGreen = "fill:#00ff00!important;stroke:none!important;";

TEST(Rewrite, PutsPaintsIntoEverySyntax) {
    const std::string green = kGreen;
    struct Case {
        std::string from, to;
    };
    for (const Case& c : {
             Case{"<rect width='9' height='9' fill='lime'/>",
                  "<rect style=\"" + green + "\" width='9' height='9' fill='lime'/>"},
             {"<rect style='fill:lime' width='9' height='9'/>",
              "<rect style='" + green + "fill:lime' width='9' height='9'/>"},
             {"<rect style=\"fill:lime; /* open\" width='9' height='9'></rect>",
              "<rect style=\"" + green + "fill:lime; /* open\" width='9' height='9'></rect>"},
             {"<rect\n\twidth='9' height='9' style\n = \"fill:&#x6c;ime\"\n>",
              "<rect\n\twidth='9' height='9' style\n = \"" + green + "fill:&#x6c;ime\"\n>"},
             {"<rect style='fill:lime !important' width='9' height='9'/>",
              "<rect style='fill:lime !important;" + green + "' width='9' height='9'/>"},
             {"<!-- <rect/> --><rect fill='lime' width='9' height='9' />",
              "<!-- <rect/> --><rect style=\"" + green + "\" fill='lime' width='9' height='9' />"},
             {"<g color='lime'><rect width='9' height='9' fill='currentColor'/></g>",
              "<rect style=\"" + green + "\" width="},
             {"<style>rect { fill: lime !important }</style><rect width='9' height='9'/>",
              "<rect style=\"" + green + "\" width="},
         }) {
        const std::string end =
            c.from.ends_with('>') && c.from.find("\n>") != std::string::npos ? "</rect>" : "";
        const Rewritten result(InSvg(c.from + end));
        EXPECT_TRUE(result.Has(c.to)) << result.Text();
        EXPECT_TRUE(result.KeepsSource());
        EXPECT_EQ(result.Painted(), 1u);
        EXPECT_EQ(result.ReasonCount(), 0u);
    }
    // Neither place is safe.
    const Rewritten stubborn(InSvg("<rect style='fill:lime!important;\"' width='9' height='9'/>"));
    EXPECT_EQ(stubborn.Painted(), 0u);
    EXPECT_EQ(stubborn.Reasons("style that insists on its paint"), 1u);
    // Places count in the text as it stands, not with its entities resolved.
    const Rewritten entities(
        "<!DOCTYPE svg [<!ENTITY lime 'fill:lime'><!ENTITY ns 'http://www.w3.org/2000/svg'>]>"
        "<svg xmlns='&ns;'><title>&lime;</title><rect style='&lime;' width='9' height='9'/></svg>");
    EXPECT_TRUE(entities.Has("<rect style='" + green + "&lime;' width")) << entities.Text();
    const Rewritten prefixed(
        "<s:svg xmlns:s='http://www.w3.org/2000/svg'><s:rect width='9' height='9'/></s:svg>");
    EXPECT_TRUE(prefixed.Has("<s:rect style=\"fill:#000000!important;"));
    EXPECT_EQ(Rewritten("<svg/>").Text(), "<svg/>");
}

TEST(Rewrite, SaysStrokesAsTheyWereWritten) {
    const auto stroke = [](const std::string& attributes) {
        const Rewritten result(
            InSvg("<g stroke='#f00'><path d='M9 9h50' fill='none' " + attributes + "/></g>"));
        EXPECT_TRUE(result.KeepsSource());
        EXPECT_EQ(result.Painted(), 1u);
        const std::size_t at = result.Text().find("stroke-width");
        return result.Text().substr(at, result.Text().find('"', at) - at);
    };
    const std::string ends =
        "stroke-linecap:butt!important;stroke-linejoin:miter!important;"
        "stroke-miterlimit:4!important;";
    const std::string plain = ends + "stroke-dasharray:none!important;";
    EXPECT_EQ(stroke(""), "stroke-width:1!important;" + plain);
    EXPECT_EQ(stroke("stroke-width='1pt'"), "stroke-width:1.3334!important;" + plain);
    EXPECT_EQ(stroke("stroke-width='2.35' transform='rotate(31) scale(.37)'"),
              "stroke-width:2.35!important;" + plain);
    EXPECT_EQ(stroke("stroke-width='.3' transform='matrix(3 1 -5 1 7 8)'"),
              "stroke-width:0.3!important;" + plain);
    EXPECT_EQ(stroke("stroke-width='3' transform='scale(9 1)' vector-effect='non-scaling-stroke'"),
              "stroke-width:3!important;" + plain);
    EXPECT_EQ(stroke("stroke-width='3' transform='scale(0)'").substr(0, 13), "stroke-width:");
    EXPECT_EQ(stroke("stroke-dasharray='5,1.5' transform='scale(3)'"),
              "stroke-width:1!important;" + ends +
                  "stroke-dasharray:5 1.5!important;stroke-dashoffset:0!important;");
    EXPECT_EQ(
        stroke(
            "stroke-linecap='square' stroke-linejoin='round' stroke-miterlimit='1' stroke='rgba(9,9,9,.5)' "
            "stroke-opacity='.5'"),
        "stroke-width:1!important;stroke-linecap:square!important;stroke-linejoin:round!important;"
        "stroke-miterlimit:1!important;stroke-dasharray:none!important;");
    EXPECT_TRUE(
        Rewritten(InSvg("<path d='M0 0h9' stroke='rgba(9,9,9,.5)' fill='#0f08' stroke-opacity='.5'/>"))
            .Has("fill-opacity:0.5333"));
}

TEST(Rewrite, KeepsWhatRecordsCannotSay) {
    const std::string definitions =
        "<marker id='m' orient='auto'><path d='M0 0h3v3z'/><path d='M0 0h-3v3z'/></marker>";
    const auto rewrite = [&](const std::string& content, const Rewritten::Edit& edit = nullptr) {
        return std::make_unique<Rewritten>(InSvg("<defs>" + definitions + "</defs>" + content), edit);
    };
    const auto marker = rewrite("<path d='M0 0h9' stroke='red' marker-end='url(#m)' marker-mid='url(#m)'/>");
    EXPECT_EQ(marker->Reasons("marker kept") + marker->Reasons("mid marker kept"), 2u);
    EXPECT_FALSE(marker->Has("marker-end:"));
    EXPECT_TRUE(marker->Has("marker-start:none!important"));
    const auto dashes =
        rewrite("<path d='M0 0h9' stroke='red' stroke-dasharray='3 2' stroke-dashoffset='1'/>");
    EXPECT_EQ(dashes->Reasons("dash offset kept"), 1u);
    EXPECT_FALSE(dashes->Has("stroke-dashoffset:"));
}

TEST(Rewrite, ShowsChangedRecords) {
    const std::string drawing = InSvg(
        "<linearGradient id='g'><stop stop-color='red'/><stop offset='1'/></linearGradient>"
        "<rect width='9' height='9' fill='url(#g)' stroke='red'/>");
    const auto edited = [&](const Rewritten::Edit& edit) { return Rewritten(drawing, edit).Text(); };
    const auto contains = [](const std::string& text, const char* part) {
        return text.find(part) != std::string::npos;
    };
    EXPECT_TRUE(contains(edited([](WFillHandle& fill, WOutlineHandle&) {
                             const CLR_COLORSPEC blue = Rgb(0, 0, 255);
                             fill.SetFountainColorspec(&blue, 1);
                         }),
                         "<stop offset=\"1\" style=\"stop-color:#0000ff!important"));
    // Turned about the middle of the box, 9 by 9.
    EXPECT_TRUE(
        contains(edited([](WFillHandle& fill, WOutlineHandle&) { fill.SetFountainAngle(90'000'000); }),
                 "gradientUnits=\"userSpaceOnUse\" x1=\"9\" y1=\"0\" x2=\"9\" y2=\"9\""));
    EXPECT_TRUE(contains(edited([](WFillHandle& fill, WOutlineHandle&) {
                             fill.ProjectFill({1, 0, 0, 1, 3 * 254000.0 / 96, 0}, true);
                         }),
                         "gradientUnits=\"userSpaceOnUse\" x1=\"3\" y1=\"0\" x2=\"12\" y2=\"0\""));
    EXPECT_TRUE(contains(edited([](WFillHandle& fill, WOutlineHandle&) { fill.SetToNoFill(); }),
                         "fill:none!important"));
    EXPECT_TRUE(contains(edited([](WFillHandle&, WOutlineHandle& outline) { outline.SetToNoOutline(); }),
                         "stroke:none!important"));
    EXPECT_TRUE(contains(edited([](WFillHandle&, WOutlineHandle& outline) { outline.SetWidth(26458); }),
                         "stroke-width:10!important"));
    const Rewritten flat(drawing, [](WFillHandle&, WOutlineHandle& outline) { outline.SetNibStretch(25); });
    EXPECT_EQ(flat.Reasons("nib that is not round"), 1u);
    EXPECT_TRUE(flat.Has("stroke-width:0.5000")) << "the round nib of the same area";
    const Rewritten conical(drawing, [](WFillHandle& fill, WOutlineHandle&) {
        CGE_FOUNTAINFILL fountain = fill.GetCGEFill()->Fountain();
        fountain.SetFountainType(FountainConical);
        fill.SetFountainData(&fountain);
    });
    EXPECT_EQ(conical.Reasons("fountain that is neither linear nor radial"), 1u);
    EXPECT_EQ(conical.Painted(), 0u);
    EXPECT_TRUE(conical.Has("stroke:#ff0000!important")) << "the outline is painted all the same";
}

TEST(Rewrite, RefusesOtherDrawings) {
    const TempFolder folder;
    const std::filesystem::path file = folder / "a.svg";
    WriteText(file, Square("#00f"));
    command::Importer importer;
    host::Error error;
    ASSERT_TRUE(importer.ImportFile(file, error));
    command::SourceDrawing source = importer.Document().Drawings().front();
    const auto reason = [&] {
        EXPECT_FALSE(command::RewriteDrawing(file, importer.Document(), source, 0, error));
        return error.reason;
    };
    source.shapes = 0;
    EXPECT_EQ(reason(), "has 1 shapes, and the document 0 of them");
    source.shapes = 1;
    WriteText(file, Square("#0f0"));
    EXPECT_EQ(reason(), "not the drawing that the document was made of");
    WriteText(file, Square("#0000f"));
    EXPECT_EQ(reason(), "not the drawing that the document was made of");
    std::filesystem::remove(file);
    EXPECT_NE(reason(), "");
    EXPECT_EQ(error.what, file.string());
}

/// Everything that has a paint, at odd places.
std::string Everything() {
    return "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!-- \xE9 -->" +
           InSvg(
               "<style>.a { fill: url(#rad) !important; stroke-width: 2 } path { stroke-linejoin: round "
               "}</style><defs>"
               "<linearGradient id='lin' x1='.1' y1='.3' x2='.8' y2='1'><stop offset='.123' "
               "stop-color='#fa0'/>"
               "<stop offset='.5' stop-color='#04c' stop-opacity='.4'/><stop offset='1' stop-color='#083'/>"
               "</linearGradient><radialGradient id='rad' gradientUnits='userSpaceOnUse' cx='60' cy='40' "
               "r='30' fx='70' "
               "fy='35' spreadMethod='reflect' gradientTransform='rotate(20 60 40) scale(1 .6)'>"
               "<stop offset='.2' stop-color='#fff'/><stop offset='.9' stop-color='#709'/></radialGradient>"
               "<pattern id='pat' width='9' height='7' patternUnits='userSpaceOnUse' "
               "patternTransform='rotate(30)'>"
               "<path class='b' d='M1 1h5v4z' fill='url(#lin)'/><circle id='c' cx='7' cy='5' r='1.5' "
               "style='fill:#c00'/></pattern>"
               "<pattern id='share' width='.25' height='.2' patternContentUnits='objectBoundingBox'>"
               "<rect width='.1' height='.1' fill='#06c'/></pattern>"
               "<pattern id='view' width='12' height='12' x='3' patternUnits='userSpaceOnUse' viewBox='-1 -1 "
               "4 4'>"
               "<circle r='1' fill='green'/></pattern>"
               "<pattern id='img' width='16' height='16' patternUnits='userSpaceOnUse'><image width='16' "
               "height='16' "
               "xlink:href='data:image/"
               "png;base64,iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAIAAAD91JpzAAAAE0lEQVR4nGP4zwAEQKKB4f9/"
               "BgAcdAR982Z8eAAAAABJRU5ErkJggg=='/></pattern>"
               "<marker id='arrow' orient='auto' markerWidth='6' markerHeight='6' refX='1' refY='2' "
               "style='overflow:visible'><path d='M0 0 L5 2 Q3 3 0 4z'/></marker><g id='twice'>"
               "<rect width='14' height='9' fill='url(#share)' stroke='#555'/></g></defs>"
               "<g transform='translate(4 3)' opacity='.9'><rect class='a' x='40' y='15' width='40' "
               "height='50' "
               "stroke='black' transform='rotate(7)'/></g>"
               "<path d='M90 10h40v30l-25 9z' style='fill:url(#lin) red;stroke:#0808;fill-opacity:.7'/>"
               "<path d='M140 10h50v35h-44z' fill='url(#pat)' stroke='black' stroke-dasharray='4 1.5' "
               "stroke-linecap='round' transform='skewX(-9)'/>"
               "<path d='M148 54h40v6' fill='url(#lin)' stroke='url(#rad)' stroke-width='5'/>"
               "<path d='M20 4v9h50' fill='none' stroke='url(#pat)' stroke-opacity='.8' stroke-width='4' "
               "stroke-dasharray='9 1' transform='rotate(3)'/>"
               "<circle cx='30' cy='75' r='19' fill='url(#view)' stroke='#a0a' stroke-width='3' "
               "transform='matrix(1.1 0 .2 .7 -14 24)'/><rect x='60' y='62' width='30' height='30' "
               "fill='url(#img)'/>"
               "<path d='M100 60q30 40 60 10' fill='none' stroke='black' stroke-width='1.7' "
               "marker-end='url(#arrow)' "
               "marker-start='url(#arrow)'/><use xlink:href='#twice' x='165' y='60'/>"
               "<use xlink:href='#twice' x='170' y='75' transform='rotate(4)'/>"
               "<text x='100' y='95' font-size='9' color='#06a'>\xE9<tspan "
               "fill='currentColor'>t\xE9</tspan></text>");
}

TEST(Rewrite, LooksTheSame) {
    const Rewritten result(Everything());
    EXPECT_TRUE(result.KeepsSource());
    EXPECT_EQ(result.Painted(), 12u);
    EXPECT_EQ(result.ReasonCount(), 0u);
    const TempFolder folder;
    const auto draw = [&](const char* name, const std::string& text) {
        WriteText(folder / name, text);
        command::Rendering rendering = command::RenderDrawing(folder / name, 400);
        EXPECT_TRUE(rendering.picture) << rendering.fault;
        return std::move(rendering.picture);
    };
    const auto before = draw("before.svg", Everything()), after = draw("after.svg", result.Text());
    ASSERT_TRUE(before && after);
    const command::PictureDifference difference = command::ComparePictures(*before, *after);
    EXPECT_TRUE(difference.IsWithin()) << difference.excess << " pixels differ, by " << difference.worst;
    // The new paints do it, not the old ones that still stand there.
    const Rewritten blank(Everything(), [](WFillHandle& fill, WOutlineHandle& outline) {
        fill.SetToNoFill();
        outline.SetToNoOutline();
    });
    const auto nothing = draw("blank.svg", blank.Text()), empty = draw("empty.svg", InSvg(""));
    ASSERT_TRUE(nothing && empty);
    EXPECT_TRUE(command::ComparePictures(*nothing, *empty).IsIdentical());
}

TEST(Rewrite, ReadsBackAsTheSameRecords) {
    const Rewritten first(Everything());
    const Rewritten second(first.Text());
    ASSERT_EQ(second.Document().ShapeCount(), first.Document().ShapeCount());
    for (std::size_t i = 0; i < first.Document().ShapeCount(); ++i) {
        const command::ShapePaints &a = first.Document().Shape(i), &b = second.Document().Shape(i);
        EXPECT_EQ(a.fill.GetCGEType(), b.fill.GetCGEType()) << i;
        if (const CLR_COLORSPEC* color = a.fill.GetUniformColorspec()) {
            EXPECT_EQ(*color, *b.fill.GetUniformColorspec());
        }
        if (const CGE_PATTERNFILL* tiles = a.fill.GetCGEFill()->Pattern()) {
            EXPECT_EQ(tiles->tiling, b.fill.GetCGEFill()->Pattern()->tiling) << i;
            EXPECT_EQ(tiles->boundingBox, b.fill.GetCGEFill()->Pattern()->boundingBox) << i;
            EXPECT_EQ(tiles->originalBoundingBox, b.fill.GetCGEFill()->Pattern()->originalBoundingBox) << i;
        }
        ASSERT_EQ(a.strokeFill == nullptr, b.strokeFill == nullptr) << i;
        if (a.strokeFill) {
            EXPECT_EQ(a.strokeFill->GetCGEType(), b.strokeFill->GetCGEType()) << i;
        }
        const CGE_OUTLINE *pen = a.outline.GetCGEOutline(), *again = b.outline.GetCGEOutline();
        ASSERT_EQ(pen == nullptr, again == nullptr) << i;
        if (pen) {
            EXPECT_EQ(CGE_OUTLINE::CompareTo(*pen, *again, false), 0) << i;
        }
    }
}

TEST(Rewrite, AdoptsContentOfAnyBytes) {
    using command::AdoptContent;
    EXPECT_EQ(AdoptContent("<rect id=\"r1\" fill=\"url(#r2)\" x=\"1\"/><use href=\"#r1\"/>"),
              "<rect id=\"\x01-r1\" x=\"1\" style=\"fill:url(#\x01-r2);\"></rect><use "
              "xlink:href=\"#\x01-r1\"></use>");
    EXPECT_EQ(AdoptContent("<text font=\"9px 'A'\">a<tspan>\xC3\xA9&amp;\xF0\x9F\x8E\xA8</tspan>b</text>"),
              "<text style=\"font:9px 'A';\">a<tspan>&#233;&#38;&#127912;</tspan>b</text>");
    EXPECT_EQ(
        AdoptContent("<g fill=\"red;stroke:url(#x)\" style=\"color:red\" href=\"#a\" xlink:href=\"#b\"/>"),
        "<g fill=\"red;stroke:url(#\x01-x)\" xlink:href=\"#\x01-b\" style=\"color:red\"></g>");
    for (const char* bad : {"", "<g>", "</g><g>", "<g>&#1;</g>", "<g a='\x01'/>", "<a:g/>", "<g a:b='1'/>",
                            "<\xC3\xA9/>", "<g>&#xD800;</g>", "<g>\xFF</g>"})
        EXPECT_FALSE(AdoptContent(bad)) << bad;
    // One that a stored document holds.
    const Rewritten damaged(InSvg("<pattern id='p' width='9' height='9' patternUnits='userSpaceOnUse'><rect "
                                  "width='2' height='2'/></pattern>"
                                  "<rect width='9' height='9' fill='url(#p)'/>"),
                            [](WFillHandle& fill, WOutlineHandle&) {
                                const unsigned id =
                                    TMPCreateTmpFile(std::as_bytes(std::span("</pattern>", 10)));
                                fill.SetTMPFileID(id);
                                TMPDeleteTmpFile(id);
                            });
    EXPECT_EQ(damaged.Reasons("pattern whose content cannot be read"), 1u);
    EXPECT_EQ(damaged.Painted(), 0u);
}

TEST(Rewrite, FindsRoundNumbers) {
    EXPECT_EQ(command::RoundestWithin(0.99987, 1.00025), 1);
    EXPECT_EQ(command::RoundestWithin(-2.6681, -2.6677), -2.668);
    EXPECT_EQ(command::RoundestWithin(-1, 1e-300), 0);
    EXPECT_EQ(command::RoundestWithin(0.1, std::nextafter(0.1, 1)), 0.1);
    EXPECT_EQ(command::NumberText(-0.0) + command::NumberText(std::nan("")) + command::NumberText(INFINITY),
              "000");
    EXPECT_EQ(command::NumberText(1e-7) + " " + command::NumberText(0.1) + " " + command::NumberText(1e22),
              "1e-07 0.1 1e+22");
}

TEST(Rewrite, WorksOnDocuments) {
    const TempFolder folder;
    const std::string out = (folder / "out").string(), art = (folder / "art.fomdoc").string();
    const std::string drawings = (folder / "in").string(), report = (folder / "report.json").string();
    WriteText(folder / "in/a.svg", Square("#00f"));
    WriteText(folder / "in/sub/b.svg", Square("#0f0"));
    WriteText(folder / "in/gone.svg", Square("#f00"));
    ASSERT_EQ(RunCommand({"import", drawings, "-o", art}).exitCode, 0);
    std::filesystem::remove(folder / "in/gone.svg");
    const CommandResult result = RunCommand({"rewrite", art, drawings, "-o", out, "--json", report});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, "fom: gone.svg: not found in the given folders\n");
    EXPECT_NE(ReadText(folder / "out/sub/b.svg").find(kGreen), std::string::npos);
    const std::string json = ReadText(report);
    for (const char* part :
         {"\"name\": \"sub/b.svg\",\n      \"shapes\": 1,\n      \"painted\": 1,", "\"painted\": 2\n",
          "\"error\": null", "\"error\": \"not found in the given folders\"", "\"shapes\": 3,"})
        EXPECT_NE(json.find(part), std::string::npos) << part << "\n" << json;
    const auto errors = [&](std::vector<std::string> words) {
        words.insert(words.begin(), "rewrite");
        return RunCommand(words).err;
    };
    EXPECT_NE(errors({art, drawings, "-o", out}).find("exists already; --force overwrites"),
              std::string::npos);
    EXPECT_NE(errors({art, drawings, "-o", drawings, "--force"}).find("is the drawing itself"),
              std::string::npos);
    EXPECT_EQ(ReadText(folder / "in/a.svg"), Square("#00f"));
    // Another name, in another place.
    std::filesystem::rename(folder / "in/sub/b.svg", folder / "in/c.svg");
    EXPECT_EQ(errors({art, drawings, "-o", out, "--force"}),
              "fom: gone.svg: not found in the given folders\n");
    EXPECT_EQ(RunCommand({"rewrite", art, drawings}).exitCode, 2);
    EXPECT_EQ(RunCommand({"rewrite", (folder / "in/a.svg").string(), drawings, "-o", out}).exitCode, 1);
}

}  // namespace
