#include "host/xml/xml_document.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace {

using host::XmlDocument;
using host::XmlNode;

std::string Reason(std::string_view text) {
    XmlDocument xml;
    EXPECT_FALSE(xml.LoadText(text, "x.xml"));
    EXPECT_FALSE(xml.Root());
    EXPECT_EQ(xml.GetError().what, "x.xml");
    return xml.GetError().reason;
}

bool Mentions(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST(XmlDocument, WalksElementsTextAndAttributes) {
    XmlDocument xml;
    ASSERT_TRUE(
        xml.LoadText("<?go fast?><a x='1' p:y='&lt;&#65;'>lead<!-- c --><b/>tail<![CDATA[<raw>]]><c/></a>"));
    const XmlNode root = xml.Root();
    EXPECT_EQ(root.Name(), "a");
    EXPECT_EQ(root.Value(), "lead");
    EXPECT_EQ(root.FirstAttribute().Next().Name(), "p:y");
    EXPECT_EQ(root.Attribute("p:y").Value(), "<A");
    EXPECT_FALSE(root.Attribute("none"));
    const XmlNode b = root.FirstChild();
    EXPECT_EQ(b.Name(), "b");
    EXPECT_EQ(b.NextSibling().GetKind(), XmlNode::Kind::Text);
    EXPECT_EQ(b.NextSibling().NextSibling().Value(), "<raw>");
    EXPECT_EQ(b.NextElement().Name(), "c");
    EXPECT_EQ(b.NextElement().Parent(), root);
    EXPECT_EQ(xml.Top().FirstChild().GetKind(), XmlNode::Kind::Instruction);
    EXPECT_FALSE(XmlNode().FirstChild().NextSibling().Attribute("x"));
}

TEST(XmlDocument, KnowsLinesThatParsingInPlaceOverwrites) {
    XmlDocument xml;
    ASSERT_TRUE(xml.LoadText("<a\n x='1\n2'>\r\n  <b\n/><c/></a>"));
    const XmlNode b = xml.Root().FirstElement();
    EXPECT_EQ(xml.LineOf(xml.Root().Offset()), 1U);
    EXPECT_EQ(xml.LineOf(b.Offset()), 4U);
    EXPECT_EQ(xml.LineOf(b.NextElement().Offset()), 5U);
}

TEST(XmlDocument, SaysWhatIsWrongAndWhere) {
    XmlDocument xml;
    EXPECT_FALSE(xml.LoadText("<a>\n<b></c>\n</a>"));
    EXPECT_EQ(xml.GetError().line, 2U);
    EXPECT_TRUE(Mentions(Reason("<a><b>"), "cut off"));
    EXPECT_TRUE(Mentions(Reason("<a b='"), "cut off"));
    EXPECT_TRUE(Mentions(Reason(""), "empty"));
    EXPECT_TRUE(Mentions(Reason("   "), "no document element"));
    EXPECT_TRUE(Mentions(Reason("<a/><b/>"), "second document element"));
    EXPECT_TRUE(Mentions(Reason(std::string_view("<a/>\0<b>", 8)), "NUL"));
    EXPECT_TRUE(Mentions(Reason("\x1F\x8B\x08"), "gzip"));
    EXPECT_TRUE(Mentions(Reason("<a>\xC3</a>"), "UTF-8"));
    EXPECT_TRUE(Mentions(Reason("<?xml version='1.0' encoding='koi8-r'?><a>\xC3</a>"), "koi8-r"));
}

TEST(XmlDocument, RefusesAttributesThatStandTwice) {
    XmlDocument xml;
    EXPECT_FALSE(
        xml.LoadText("<a x='1' y=''><b x='1' p:x='2' X='3'/>\n<c d='&#10;'\n z='1' zz='' z='2'/></a>"));
    EXPECT_EQ(xml.GetError().line, 3U);
    EXPECT_EQ(xml.GetError().reason, "attribute 'z' stands twice in an element");
    std::string many = "<a ";
    for (int i = 0; i < 100000; ++i)
        many += "attribute" + std::to_string(i) + "=''\n";
    EXPECT_TRUE(xml.LoadText(many + "/>"));
    EXPECT_TRUE(Mentions(Reason(many + "attribute7='' attribute7=''/>"), "'attribute7' stands twice"));
}

TEST(XmlDocument, ReadsOtherEncodings) {
    XmlDocument xml;
    ASSERT_TRUE(xml.LoadText("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"));
    EXPECT_EQ(xml.Root().Value(), "\xC3\xA9");
    std::string wide = "\xFE\xFF";
    for (const char c : std::string_view("<a>!</a>"))
        wide += std::string(1, '\0') + c;
    wide.replace(wide.find('!') - 1, 2, "\xD8\x3D\xDE\x00", 4);
    ASSERT_TRUE(xml.LoadText(wide));
    EXPECT_EQ(xml.Root().Value(), "\xF0\x9F\x98\x80");
    wide.replace(wide.find('\xDE'), 1, "a");
    EXPECT_FALSE(xml.LoadText(wide));
}

TEST(XmlDocument, ResolvesPlainEntitiesOnly) {
    XmlDocument xml;
    ASSERT_TRUE(xml.LoadText(
        "<!DOCTYPE a [<!-- > --><!ENTITY u \"it's\"><!ENTITY ext SYSTEM 'file:///etc/passwd'>\n]>"
        "<a x='&u;' y='&ext;&none;'><![CDATA[&u;]]>&amp;u;</a>"));
    EXPECT_EQ(xml.Root().Attribute("x").Value(), "it's");
    EXPECT_EQ(xml.Root().Attribute("y").Value(), "&ext;&none;");
    EXPECT_EQ(xml.Root().FirstChild().Value(), "&u;");
    const std::string bomb = "<!DOCTYPE a [<!ENTITY b 'bb'><!ENTITY c '&b;&b;'>]>";
    EXPECT_TRUE(xml.LoadText(bomb + "<a/>"));
    EXPECT_TRUE(Mentions(Reason(bomb + "<a>&c;</a>"), "entity 'c'"));
    std::string flat = "<!DOCTYPE a [<!ENTITY b '" + std::string(10000, 'b') + "'>]><a>";
    for (int i = 0; i < 1000; ++i)
        flat += "&b;";
    EXPECT_TRUE(Mentions(Reason(flat + "</a>"), "swells"));
}

TEST(XmlDocument, RefusesTreesThatOutgrowTheirText) {
    std::string dense = "<a>";
    for (int i = 0; i < 100000; ++i)
        dense += "x<a/>";
    EXPECT_TRUE(Mentions(Reason(dense + "</a>"), "too much markup"));
    XmlDocument xml;
    EXPECT_TRUE(xml.LoadText(dense.substr(0, 40003) + "</a>"));
    const std::string fine(200000, 'x');
    EXPECT_TRUE(xml.LoadText("<a>" + fine + "</a>"));
}

TEST(XmlDocument, LoadsRegularFilesOnly) {
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "xml_document_test";
    std::filesystem::create_directories(folder);
    XmlDocument xml;
    EXPECT_FALSE(xml.LoadFile(folder));
    EXPECT_TRUE(Mentions(xml.GetError().reason, "not a regular file"));
    EXPECT_FALSE(xml.LoadFile(folder / "none.xml"));
    EXPECT_TRUE(Mentions(xml.GetError().reason, "no such file"));
    std::ofstream(folder / "empty.xml").flush();
    EXPECT_FALSE(xml.LoadFile(folder / "empty.xml"));
    EXPECT_TRUE(Mentions(xml.GetError().reason, "empty"));
    std::ofstream(folder / "good.xml") << "<good/>";
    EXPECT_TRUE(xml.LoadFile(folder / "good.xml"));
    EXPECT_EQ(xml.Root().Name(), "good");
    std::filesystem::remove_all(folder);
}

}  // namespace
