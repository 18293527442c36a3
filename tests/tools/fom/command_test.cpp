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
    EXPECT_EQ(RunCommand({"import", ""}).exitCode, 2);
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
        const std::string occupied = folder.Path().string();
        EXPECT_EQ(RunCommand({action, drawing, "-o", occupied, "--force"}).err,
                  "fom: " + occupied + ": is a folder\n");
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

/// Runs the program through the shell; both its streams in one text, unless the arguments lead them
/// elsewhere.
CommandResult RunProgram(const std::string& arguments) {
    CommandResult result;
    std::FILE* pipe = popen((std::string("exec 2>&1; '") + FOM_PROGRAM + "' " + arguments).c_str(), "r");
    std::array<char, 4096> piece;
    while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), pipe))
        result.out.append(piece.data(), size);
    result.exitCode = pclose(pipe) / 256;
    return result;
}

TEST(Command, WritesToWhatIsNoFile) {
    const TempFolder folder;
    const std::string drawing = "'" + (folder / "a.svg").string() + "' ";
    WriteText(folder / "a.svg", Square("#00f"));
    const std::string lost = "fom: standard output: cannot be written\n";
    for (const std::string& words :
         {std::string("--help"), std::string("--version"), std::string("help import"), "import " + drawing,
          "import --json " + drawing}) {
        const CommandResult full = RunProgram(words + " > /dev/full");
        EXPECT_EQ(full.exitCode, 1) << words;
        EXPECT_EQ(full.out, lost) << words;
    }
    EXPECT_EQ(RunProgram("import " + drawing + "-o /dev/full").out, "fom: /dev/full: cannot be written\n");
    EXPECT_EQ(RunProgram("import " + drawing + "-o /dev/null").exitCode, 0);
    EXPECT_TRUE(RunProgram("swatches " + drawing + "-o /dev/stdout | cat").out.starts_with("\x89PNG"));

    // A file that is open goes on to be the same file, and keeps what it has.
    const std::string kept = "'" + (folder / "kept").string() + "'";
    std::filesystem::create_symlink("/dev/stdout", folder / "link");
    for (const std::string& output :
         {std::string("/dev/stdout"), std::string("/dev/fd/3"), (folder / "link").string()}) {
        WriteText(folder / "kept", "before\n");
        std::filesystem::create_hard_link(folder / "kept", folder / "same");
        const CommandResult result =
            RunProgram("import " + drawing + "--force -o " + output + " 3>>" + kept + " >>" + kept);
        EXPECT_EQ(result.exitCode, 0) << result.out;
        const std::string text = ReadText(folder / "same");
        EXPECT_TRUE(text.starts_with("before\nfiles ")) << text;
        EXPECT_EQ(text, ReadText(folder / "kept"));
        std::filesystem::remove(folder / "same");
    }
}

TEST(Command, RunsAsProgram) {
    const TempFolder folder;
    WriteText(folder / "a.svg", Square("#00f"));
    WriteText(folder / "b.svg", "<svg>");
    const auto& run = RunProgram;
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
