#include "svg/splice.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/xml/xml_document.h"

#include "svg/data_uri.h"
#include "svg/start_tags.h"
#include "svg/tree_walk.h"

namespace {

std::string Utf16(std::string_view ascii, bool bigEndian) {
    std::string text = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii)
        text += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return text;
}

/// What stands in the quotes of each tag's style, "-" for a tag without one.
std::vector<std::string> Styles(std::string_view text) {
    std::vector<std::string> styles;
    svg::StartTagReader reader(text);
    while (const auto tag = reader.Next()) {
        styles.emplace_back(tag->name);
        const svg::TagAttribute& style = tag->style;
        styles.emplace_back(style ? text.substr(style.value, style.end - style.value) : "-");
    }
    return styles;
}

TEST(StartTags, AreFoundWhereverMarkupHides) {
    constexpr std::string_view text =
        "<?xml version='1.0'?><?note <a> ?>\n"
        "<!DOCTYPE svg [<!ENTITY e '<b style=\"1\">'> <!-- ]> <c> --> <!ATTLIST svg x CDATA \"]>\">"
        "<?pi ]> ?> ]>\n"
        "<!-- <d> --><svg\n\tstyle = 'x\"y>'\n><![CDATA[<e>]]]><g><h/></g>"
        "<i:path style-x='1' xstyle='2' title='a > b style=\"3\"'/><j style=\"'\"></j\n></svg><!-- <k> -->";
    EXPECT_EQ(Styles(text),
              (std::vector<std::string>{"svg", "x\"y>", "g", "-", "h", "-", "i:path", "-", "j", "'"}));
    host::XmlDocument document;
    ASSERT_TRUE(document.LoadText(text));
    svg::StartTagReader reader(text);
    svg::WalkElements(document.Root(), [&](host::XmlNode element, unsigned) {
        const auto tag = reader.Next();
        EXPECT_TRUE(tag && tag->name == element.Name());
        EXPECT_EQ(tag->isEmpty, tag->name == "h" || tag->name == "i:path");
        EXPECT_EQ(text[tag->end - 1], '>');
        return true;
    });
    EXPECT_FALSE(reader.Next());
}

TEST(StartTags, TellPlacesOfElements) {
    constexpr std::string_view text =
        "<a><b id = 'i'\t x:href='' y:href='j' z:href='k' href=''><c/><!-- </b> --><d></d ></b >e</a>";
    svg::StartTagReader reader(text, 3);
    const auto tag = reader.Next();
    ASSERT_TRUE(tag);
    EXPECT_EQ(text.substr(tag->start, tag->nameEnd - tag->start), "<b");
    EXPECT_EQ(text.substr(tag->id.begin, tag->id.end + 1 - tag->id.begin), " id = 'i'");
    EXPECT_EQ(text.substr(tag->prefixedHref.value, tag->prefixedHref.end - tag->prefixedHref.value), "j");
    EXPECT_TRUE(tag->href && !tag->style);
    EXPECT_EQ(text.substr(*reader.Leave(1)), text.substr(tag->end));
    EXPECT_TRUE(reader.Next());
    EXPECT_EQ(text.substr(*reader.Leave(0)), "e</a>");
    for (std::size_t size = 4; size < text.size() - 5; ++size) {
        svg::StartTagReader broken(text.substr(0, size), 3);
        EXPECT_FALSE(broken.Next() && broken.Leave(0)) << size;
    }
}

TEST(StartTags, EndWithTheText) {
    constexpr std::string_view text = "<!DOCTYPE a [<!-- - -->]><?b ?><a b='c' style=\"d\"><![CDATA[e]]></a>";
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_LE(Styles(text.substr(0, size)).size(), 2u);
    for (const char* broken : {"<a b>", "<a b=c>", "<a / >", "<a b='c", "<", "<a b==''>"})
        EXPECT_TRUE(Styles(broken).empty()) << broken;
}

TEST(Splice, KeepsEncodings) {
    const auto put = [](std::string bytes) {
        const svg::DrawingText text(std::move(bytes));
        svg::Splice splice;
        splice.Insert(text.Units().find('c'), "2");
        splice.Insert(text.Units().find('b'), "0");
        splice.Insert(text.Units().find('c'), "3");
        splice.Insert(text.Units().size(), "4");
        svg::Splice part;
        part.Replace(text.Units().find('b'), text.Units().find('c'), "<b>");
        part.Insert(text.Units().find('b'), "0");
        splice.InsertBytes(0, part.Apply(text, text.Units().find('b'), text.Units().size()));
        return splice.Apply(text);
    };
    EXPECT_EQ(put("abc"), "0<b>ca0b23c4");
    EXPECT_EQ(put("\xEF\xBB\xBF\xC3\xA4"
                  "bc"),
              "0<b>c\xEF\xBB\xBF\xC3\xA4"
              "0b23c4");
    EXPECT_EQ(put("\xE4"
                  "bc"),
              "0<b>c\xE4"
              "0b23c4");
    for (const bool big : {false, true}) {
        const std::string piece = Utf16("0<b>c", big).substr(2);
        EXPECT_EQ(put(Utf16("abc", big)), piece + Utf16("a0b23c4", big));
        EXPECT_EQ(put(Utf16("abc", big) + '\n').back(), '\n') << "half a unit";
        // U+6261 has the letters of "ab" in its bytes.
        EXPECT_EQ(put(Utf16("x", big) + "ab" + Utf16("bc", big).substr(2)),
                  piece + Utf16("x", big) + "ab" + Utf16("0b23c4", big).substr(2));
    }
}

TEST(DataUri, IsUndone) {
    std::string bytes;
    for (int i = 0; i < 260; ++i) {
        const std::string uri = svg::EncodeDataUri("image/png", std::as_bytes(std::span(bytes)));
        EXPECT_EQ(uri.size(), 22 + (bytes.size() + 2) / 3 * 4);
        if (const auto data = svg::DecodeDataUri(uri)) {
            EXPECT_EQ(data->bytes, bytes);
        } else {
            ADD_FAILURE() << uri;
        }
        bytes += static_cast<char>(i * 7);
    }
}

}  // namespace
