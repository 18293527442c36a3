#include <gtest/gtest.h>

#include "fom/document_file.h"
#include "fom/drawing_name.h"

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"
#include "tools/fom/document_samples.h"

namespace {

using namespace testing_support;

/// A folder with two drawings and a document of them.
class DocumentCommand : public ::testing::Test {
protected:
    DocumentCommand() {
        WriteText(m_folder / "in" / "a.svg", Square("#00f"));
        WriteText(m_folder / "in" / "sub" / "a.svg", Square("url(#g)", kGradient));
        m_imported = RunCommand({"import", In(), "-o", m_document});
    }
    std::string In() const { return (m_folder / "in").string(); }

    static constexpr const char* kGradient =
        "<linearGradient id='g' spreadMethod='repeat'><stop stop-color='red'/><stop "
        "offset='1'/></linearGradient>";
    TempFolder m_folder;
    std::string m_document = (m_folder / "art.fomdoc").string();
    CommandResult m_imported;
};

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST_F(DocumentCommand, ImportSavesTheDocumentAndReports) {
    EXPECT_EQ(m_imported.exitCode, 0) << m_imported.err;
    EXPECT_TRUE(Contains(m_imported.out, "distinct fills"));
    EXPECT_EQ(RunCommand({"verify", m_document}).exitCode, 0);
    EXPECT_EQ(RunCommand({"import", In(), "-o", m_document}).exitCode, 1) << "not without --force";

    // Names are relative and stay apart; a drawing with an error is not one of the document.
    WriteText(m_folder / "more" / "a.svg", Square("red"));
    WriteText(m_folder / "more" / "b.svg", "no drawing");
    const std::string more = (m_folder / "more").string();
    const CommandResult result = RunCommand({"import", "--json", In(), more, "-o", m_document, "--force"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(Contains(result.out, "\"failedFiles\": 1"));
    host::Error error;
    const auto document = command::LoadDocument(m_document, error);
    ASSERT_TRUE(document) << error.reason;
    std::vector<std::string> names;
    for (const command::SourceDrawing& drawing : document->Drawings())
        names.push_back(drawing.name);
    EXPECT_EQ(names, (std::vector<std::string>{"a.svg", "sub/a.svg", "a (2).svg"}));
    host::Md5 md5;
    const std::string text = ReadText(m_folder / "in" / "a.svg");
    md5.Update(text.data(), text.size());
    EXPECT_EQ(document->Drawings()[0].digest, md5.Finish());
    EXPECT_EQ(document->Drawings()[0].bytes, text.size());
}

TEST_F(DocumentCommand, InspectShowsBlocksAndRecords) {
    const CommandResult blocks = RunCommand({"inspect", m_document});
    EXPECT_EQ(blocks.exitCode, 0);
    for (const char* part : {"FILL", "DRAW", "SHAP", "END", "fountain", "uniform"})
        EXPECT_TRUE(Contains(blocks.out, part)) << part;
    const CommandResult fill = RunCommand({"inspect", m_document, "--fill", "1", "--hex", "--json"});
    for (const char* part :
         {"\"kind\": \"fountain\"", "\"spread method\"", "\"section\": \"12.5\"", "\"hex\": ["})
        EXPECT_TRUE(Contains(fill.out, part)) << part << fill.out;
    const CommandResult drawing = RunCommand({"inspect", m_document, "--drawing", "sub/a.svg"});
    EXPECT_TRUE(Contains(drawing.out, "shape records")) << drawing.out;
    EXPECT_EQ(RunCommand({"inspect", m_document, "--outline", "0"}).exitCode, 1) << "nothing is stroked";
    EXPECT_EQ(RunCommand({"inspect", m_document, "--fill", "x"}).exitCode, 2);
    EXPECT_EQ(RunCommand({"inspect", m_document, "--fill", "0", "--outline", "0"}).exitCode, 2);
    EXPECT_EQ(RunCommand({"inspect", (m_folder / "in" / "a.svg").string()}).exitCode, 1);
}

// A mono bitmap without a bitmap announces four bytes that it does not have, in both sections.
TEST_F(DocumentCommand, InspectShowsSizesAsTheyAre) {
    command::PaintDocument document;
    CGE_FILL fill(FillMonoBitmap);
    document.AddShape(&fill, document.Pool());
    command::SourceDrawing drawing;
    drawing.name = "a.svg";
    drawing.shapes = 1;
    document.AddDrawing(drawing);
    host::Error error;
    ASSERT_TRUE(command::SaveDocument(document, m_document, command::DocumentVersion::Current, error));
    const CommandResult shown = RunCommand({"inspect", m_document, "--fill", "0"});
    const std::size_t first = shown.out.find("(4 too many)");
    ASSERT_NE(first, std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("(4 too many)", first + 1), std::string::npos);
    EXPECT_EQ(RunCommand({"verify", m_document}).exitCode, 0);
}

TEST_F(DocumentCommand, ConvertNamesWhatIsLost) {
    const std::string old = (m_folder / "old.fomdoc").string();
    const CommandResult result =
        RunCommand({"convert", m_document, "-o", old, "--document-version", "12.0", "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_TRUE(Contains(result.out, "\"field\": \"spread method\"")) << result.out;
    EXPECT_EQ(RunCommand({"verify", old}).exitCode, 0);
    EXPECT_TRUE(Contains(RunCommand({"stats", old}).out, "12.0"));
    const std::string back = (m_folder / "back.fomdoc").string();
    const CommandResult again = RunCommand({"convert", old, "-o", back, "--document-version", "current"});
    EXPECT_FALSE(Contains(again.out, "lost")) << again.out;
    EXPECT_EQ(RunCommand({"convert", m_document, "-o", old, "--document-version", "12.0"}).exitCode, 1);
    EXPECT_EQ(RunCommand({"convert", m_document, "-o", old, "--document-version", "11"}).exitCode, 2);
}

TEST_F(DocumentCommand, DamageIsFoundAndRecoveredFrom) {
    std::string text = ReadText(m_document);
    text[text.size() - 100] ^= 1;
    const std::string damaged = (m_folder / "damaged.fomdoc").string();
    WriteText(damaged, text);
    const CommandResult verified = RunCommand({"verify", damaged});
    EXPECT_EQ(verified.exitCode, 1);
    EXPECT_TRUE(Contains(verified.err, "damaged.fomdoc: byte ")) << verified.err;
    EXPECT_TRUE(Contains(RunCommand({"verify", "--json", damaged}).out, "\"sound\": false"));
    EXPECT_TRUE(Contains(RunCommand({"inspect", damaged}).out, "damaged"));
    for (const char* action : {"stats", "swatches", "convert"}) {
        std::vector<std::string> words{action, damaged};
        if (*action != 's' || action[1] == 'w')
            words.insert(words.end(), {"-o", (m_folder / "out").string()});
        if (*action == 'c') words.insert(words.end(), {"--document-version", "12.5"});
        EXPECT_EQ(RunCommand(words).exitCode, 1) << action;
    }
    const std::string whole = (m_folder / "whole.fomdoc").string();
    const CommandResult recovered = RunCommand({"recover", damaged, "-o", whole});
    EXPECT_EQ(recovered.exitCode, 0) << recovered.err;
    EXPECT_TRUE(Contains(recovered.out, "2 shapes")) << recovered.out;
    EXPECT_EQ(RunCommand({"verify", whole}).exitCode, 0) << RunCommand({"verify", whole}).err;
    EXPECT_EQ(RunCommand({"swatches", m_document, "-o", (m_folder / "sheet.png").string()}).exitCode, 0);
}

TEST(DrawingName, StaysBelowAFolder) {
    for (const char* name : {"a.svg", "a/b c.svg", "..a/b..", "\u00e9.svg", "a:b"})
        EXPECT_TRUE(command::IsDrawingName(name)) << name;
    for (const std::string& name :
         {std::string(), std::string("/a"), std::string("a/"), std::string("a//b"), std::string("."),
          std::string("a/.."), std::string("a\\b"), std::string("a\nb"), std::string("a\xFF"),
          std::string("a\0b", 3), std::string(1025, 'a')})
        EXPECT_FALSE(command::IsDrawingName(name)) << name;
    const std::filesystem::path paths[] = {"/a/../b.svg",
                                           "a\n\\b.svg",
                                           "..",
                                           "",
                                           std::string(2000, 'x'),
                                           std::string(1022, 'x') + "/\u00e9\u00e9"};
    for (const std::filesystem::path& path : paths)
        EXPECT_TRUE(command::IsDrawingName(command::ToDrawingName(path))) << path;
    EXPECT_EQ(command::ToDrawingName("./a/b.svg"), "a/b.svg");

    command::DrawingNames names;
    EXPECT_EQ(names.Take("a/b.svg"), "a/b.svg");
    EXPECT_EQ(names.Take("a/b (2).svg"), "a/b (2).svg");
    EXPECT_EQ(names.Take("a/b.svg"), "a/b (3).svg");
    EXPECT_EQ(names.Take("a.d/b"), "a.d/b");
    EXPECT_EQ(names.Take("a.d/b"), "a.d/b (2)");
    const std::string longest = std::string(500, 'x') + "." + std::string(523, 'y');
    EXPECT_EQ(names.Take(longest), longest);
    for (int i = 0; i < 20; ++i)
        EXPECT_TRUE(command::IsDrawingName(names.Take(longest)));
}

}  // namespace
