#include <array>
#include <cstdio>
#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace testing_support;

TEST(Command, AnswersHelpAndUsage) {
    EXPECT_EQ(RunCommand({}).exitCode, 2);
    EXPECT_EQ(RunCommand({"export"}).exitCode, 2);
    EXPECT_NE(RunCommand({"export"}).err.find("no command 'export'"), std::string::npos);
    EXPECT_EQ(RunCommand({"import"}).exitCode, 2);
    EXPECT_EQ(RunCommand({"swatches", "a.svg"}).exitCode, 2) << "needs -o";
    EXPECT_EQ(RunCommand({"swatches", "a.svg", "-o", "b.png", "--limit", "0"}).exitCode, 2);
    EXPECT_EQ(RunCommand({"help", "export"}).exitCode, 2);
    const CommandResult mistake = RunCommand({"import", "--unknown", "a.svg"});
    EXPECT_EQ(mistake.exitCode, 2);
    EXPECT_TRUE(mistake.out.empty());
    EXPECT_NE(mistake.err.find("--unknown"), std::string::npos);

    EXPECT_TRUE(RunCommand({"--version"}).out.starts_with("fom "));
    for (const std::vector<std::string>& words : {std::vector<std::string>{"import", "--help"},
                                                  {"help", "import"},
                                                  {"help"},
                                                  {"swatches", "--help"}}) {
        const CommandResult help = RunCommand(words);
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_NE(help.out.find("Examples:"), std::string::npos) << help.out;
        EXPECT_TRUE(help.err.empty());
    }
}

TEST(Command, GoesOnAfterErrors) {
    const TempFolder folder;
    WriteText(folder / "a.svg", "<svg");
    WriteText(folder / "b\n.svg", Square("#00f"));
    WriteText(folder / "c\n.svg", "no drawing");
    const CommandResult result =
        RunCommand({"import", folder.Path().string(), (folder / "missing.svg").string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.err.find("missing.svg: no such file or folder\n"), std::string::npos);
    EXPECT_NE(result.err.find("c?.svg:1:"), std::string::npos) << "a message is one line: " << result.err;
    EXPECT_NE(result.out.find("1 uniform"), std::string::npos);
}

TEST(Command, WritesJson) {
    const TempFolder folder;
    WriteText(folder / "a.svg", Square("#00f"));
    const CommandResult result = RunCommand({"import", "--json", (folder / "a.svg").string()});
    EXPECT_EQ(result.exitCode, 0);
    for (const char* part :
         {"\"files\": 1,", "\"shapes\": 1,", "\"uniform\": 1\n", "\"heapBytesPerFill\": null",
          "\"notCarriedOver\": {}", "\"shapesPerFill\": 1.0"})
        EXPECT_NE(result.out.find(part), std::string::npos) << part << "\n" << result.out;
}

TEST(Command, KeepsFilesUnlessForced) {
    const TempFolder folder;
    const std::string drawing = (folder / "a.svg").string();
    const std::string text = Square("#00f");
    WriteText(drawing, text);
    for (const char* action : {"import", "swatches"}) {
        const CommandResult refused = RunCommand({action, drawing, "-o", drawing});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_EQ(refused.err, "fom: " + drawing + ": exists already; --force overwrites\n");
        EXPECT_EQ(ReadText(drawing), text);
        const std::string output = (folder / action).string();
        EXPECT_EQ(RunCommand({action, drawing, "-o", output}).exitCode, 0);
        WriteText(output, "old");
        EXPECT_EQ(RunCommand({action, drawing, "-o", output}).exitCode, 1);
        EXPECT_EQ(ReadText(output), "old");
        EXPECT_EQ(RunCommand({action, drawing, "-o", output, "--force"}).exitCode, 0);
        EXPECT_NE(ReadText(output), "old");
        EXPECT_EQ(RunCommand({action, drawing, "-o", (folder / "none" / "x").string()}).exitCode, 1);
    }
    EXPECT_EQ(folder.Count(), 3u) << "nothing but the drawing and two results";
}

TEST(Command, RunsAsProgram) {
    const TempFolder folder;
    WriteText(folder / "a.svg", Square("#00f"));
    WriteText(folder / "b.svg", "<svg>");
    const auto run = [](const std::string& arguments) {
        CommandResult result;
        std::FILE* pipe = popen((std::string(FOM_PROGRAM) + " " + arguments + " 2>&1").c_str(), "r");
        std::array<char, 4096> piece;
        while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe))
            result.out.append(piece.data(), size);
        result.exitCode = pclose(pipe) / 256;
        return result;
    };
    const CommandResult good = run("import '" + (folder / "a.svg").string() + "'");
    EXPECT_EQ(good.exitCode, 0);
    EXPECT_NE(good.out.find("heap bytes per fill"), std::string::npos) << good.out;
    const CommandResult bad = run("import '" + folder.Path().string() + "'");
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_NE(bad.out.find("b.svg:1:"), std::string::npos) << bad.out;
    EXPECT_EQ(bad.out.find('\r'), std::string::npos) << "no progress without a terminal";
    EXPECT_EQ(run("swatches '" + (folder / "a.svg").string() + "' -o '" + (folder / "s.png").string() + "'")
                  .exitCode,
              0);
    EXPECT_TRUE(ReadText(folder / "s.png").starts_with("\x89PNG"));
}

}  // namespace
