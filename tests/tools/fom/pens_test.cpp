#include <gtest/gtest.h>

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace testing_support;

TEST(Pens, TellsNumbers) {
    const CommandResult text = RunCommand(
        {"pens", "--under", "scale(3 1) rotate(30)", "--stretch", "50", "--angle", "30", "--dashes", "3,1"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(text.out,
              "                          before               after\n"
              "kind                    dot-dash            dot-dash\n"
              "width                       2 pt             5.46 pt\n"
              "                     7,056 units        19,256 units\n"
              "stretch                     50 %                20 %\n"
              "angle                        30\u00b0             82.088\u00b0\n"
              "dot length                  2 pt             5.46 pt\n"
              "                     7,056 units        19,256 units\n"
              "dashes                       3 1                 3 1\n");
    const std::string most = "2147483647";
    std::string dashes = most;
    for (int i = 1; i < 10; ++i)
        dashes += ' ' + most;
    const CommandResult wide = RunCommand({"pens", "--under", "none", "--dashes", dashes, "--width", "1"});
    EXPECT_TRUE(wide.out.ends_with("dashes       " + dashes + ' ' + dashes + '\n')) << wide.out;
    EXPECT_NE(wide.out.find(" 1 unit  "), std::string::npos) << wide.out;
    const auto after = [](std::vector<std::string> words) {
        words.insert(words.begin(), {"pens", "--json"});
        const CommandResult result = RunCommand(words);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        std::string json = result.out.substr(result.out.find("after"));
        std::erase_if(json, [](char c) { return c == ' ' || c == '\n'; });
        return json;
    };
    EXPECT_EQ(after({"--under", "scale(1 2)", "--width", "1mm", "--dot-length", "0.5mm", "--dashes", "4 2"}),
              R"(after":{"kind":"dot-dash","width":20000,"stretch":50,"angle":0.0,"dotLength":10000,)"
              R"("dashes":[4,2]}})");
    for (const char* width : {"254000", "1in", "2.54 cm", "25.4mm", "72pt", "96px"})
        EXPECT_NE(after({"--under", "rotate(0)", "--width", width}).find("\"width\":254000,"),
                  std::string::npos)
            << width;
    EXPECT_NE(after({"--under", "none", "--angle", "-30", "--kind", "none"}).find(R"("none","width":7056,)"),
              std::string::npos);
}

TEST(Pens, AnswersMistakes) {
    const std::vector<std::vector<std::string>> mistakes = {{"--under", "turn(3)"},
                                                            {"--under", "scale(nan)"},
                                                            {"--under", ""},
                                                            {"--width", "3 miles"},
                                                            {"--width", "-1mm"},
                                                            {"--width", "1e300mm"},
                                                            {"--stretch", "0"},
                                                            {"--stretch", "50.5"},
                                                            {"--angle", "400"},
                                                            {"--dashes", "3"},
                                                            {"--dashes", "0,0"},
                                                            {"--dashes", "3,-1"},
                                                            {"--dashes", "1,1,1,1,1,1,1,1,1,1,1,1"},
                                                            {"--dot-length", "x"},
                                                            {"--kind", "dotted"},
                                                            {"--kind", "dot-dash"}};
    for (std::vector<std::string> words : mistakes) {
        const std::string option = words[0], value = words[1];
        words.insert(words.begin(), "pens");
        if (option != "--under") words.insert(words.end(), {"--under", "none"});
        const CommandResult result = RunCommand(words);
        EXPECT_EQ(result.exitCode, 2) << option << ' ' << value;
        EXPECT_TRUE(result.err.starts_with("fom: " + option)) << result.err;
        EXPECT_TRUE(result.out.empty());
    }
    EXPECT_EQ(RunCommand({"pens"}).exitCode, 2);
}

TEST(Pens, DrawsWhatCannotBeUndone) {
    const TempFolder folder;
    const std::string picture = (folder / "pens.png").string();
    for (const char* under : {"scale(3 1) rotate(20)", "scale(0)", "scale(1 0)", "matrix(1 2 2 4 0 0)",
                              "scale(1e300)", "scale(1e-300)", "skewX(89.9999)", "scale(-1e9 1)"}) {
        const CommandResult result =
            RunCommand({"pens", "--under", under, "--dashes", "3 1", "-o", picture, "--force"});
        EXPECT_EQ(result.exitCode, 0) << under << result.err;
        EXPECT_TRUE(ReadText(picture).starts_with("\x89PNG"));
        EXPECT_NE(result.out.find("stretch"), std::string::npos);
    }
    const CommandResult refused = RunCommand({"pens", "--under", "none", "-o", picture});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.out.empty());
}

}  // namespace
