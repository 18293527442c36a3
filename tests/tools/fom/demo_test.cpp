#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "fom/child_process.h"
#include "fom/demo_reasons.h"

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace command;
using namespace testing_support;
using nlohmann::json;
namespace fs = std::filesystem;

/// Runs the program itself: the demo starts it again.
ChildResult RunProgram(const std::vector<std::string>& words, const std::string& program = FOM_PROGRAM) {
    ChildRequest request;
    request.program = program;
    request.arguments = words;
    return RunChild(request);
}

/// The drawings of the tests that can be read.
void CopyDrawings(const fs::path& to) {
    fs::create_directories(to / "below");
    for (const fs::directory_entry& entry : fs::directory_iterator(FOM_DATA)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() == ".svg" && !name.starts_with("fault_"))
            fs::copy_file(entry.path(), (name < "p" ? to : to / "below") / name);
    }
}

TEST(Demo, RepaintsDrawingsAndNoticesWrongPaints) {
    ChildRequest renderer;
    renderer.program = "rsvg-convert";
    renderer.arguments = {"--version"};
    if (!RunChild(renderer).Succeeded()) GTEST_SKIP() << "no rsvg-convert";
    const TempFolder temp;
    CopyDrawings(temp / "drawings");
    // Shows a uniform fill over most of it: what the self-check needs.
    WriteText(temp / "drawings" / "a 'name' &.svg",
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" height=\"20\">"
              "<rect width=\"40\" height=\"20\" fill=\"#2060c0\"/>"
              "<circle cx=\"20\" cy=\"10\" r=\"6\" fill=\"#fff\" stroke=\"#000\"/></svg>");
    const fs::path out = temp / "out";
    const std::vector<std::string> words{
        "demo", (temp / "drawings").string(), "-o", out.string(), "--size", "64", "--jobs", "2"};
    const ChildResult first = RunProgram(words);
    EXPECT_EQ(first.code, 0) << first.errors;
    const json summary = json::parse(ReadText(out / "summary.json"));
    EXPECT_EQ(summary["passed"], true);
    EXPECT_EQ(summary["drawings"], summary["results"].size());
    EXPECT_GT(summary["identical"], 0);
    EXPECT_EQ(summary["failed"], 0);
    EXPECT_EQ(summary["unexplained"], 0);
    EXPECT_EQ(summary["selfCheck"]["passed"], true) << summary["selfCheck"];
    EXPECT_GT(summary["selfCheck"]["shareBeyondTolerance"], 0.02);
    for (const json& result : summary["results"]) {
        const fs::path rewrite = out / "rewritten" / result["name"].get<std::string>();
        const fs::path original = temp / "drawings" / result["name"].get<std::string>();
        EXPECT_NE(ReadText(rewrite), ReadText(original)) << result;
        EXPECT_EQ(result.contains("pictures"), result["outcome"] != "notDrawn") << result;
        const std::string picture = result.value("pictures", "") + "-before.png";
        EXPECT_EQ(fs::exists(out / "pictures" / picture), result.contains("pictures")) << result;
    }
    EXPECT_FALSE(fs::exists(out / "self-check.fomdoc"));
    EXPECT_FALSE(fs::exists(out / "self-check"));
    EXPECT_NE(ReadText(out / "index.html").find("below/"), std::string::npos);

    EXPECT_EQ(RunProgram(words).code, 1) << "what is there stays";
    std::vector<std::string> again = words;
    again.insert(again.end(), {"--force", "--sample", "3"});
    RunProgram(again);
    EXPECT_EQ(json::parse(ReadText(out / "summary.json"))["drawings"], 3);
    std::size_t rewritten = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(out / "rewritten"))
        rewritten += entry.is_regular_file() ? 1 : 0;
    EXPECT_EQ(rewritten, 3u) << "nothing of the first run is left";
}

TEST(Demo, NamesWhatIsMissing) {
    const TempFolder temp;
    WriteText(temp / "a.svg", Square("#00f"));
    const ChildResult result = RunProgram(
        {"PATH=/nowhere", FOM_PROGRAM, "demo", (temp / "a.svg").string(), "-o", (temp / "out").string()},
        "/usr/bin/env");
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.errors.find("librsvg2-bin"), std::string::npos) << result.errors;
    EXPECT_FALSE(fs::exists(temp / "out"));
    EXPECT_EQ(RunCommand({"demo", (temp / "a.svg").string()}).exitCode, 2) << "needs -o";
    EXPECT_EQ(RunCommand({"demo", (temp / "a.svg").string(), "-o", "x", "--size", "0"}).exitCode, 2);
}

TEST(Demo, CountsOnlyReasonsThatShow) {
    EXPECT_TRUE(ShowsInRewrite("dashes beyond ten"));
    EXPECT_FALSE(ShowsInRewrite("fill opacity")) << "stays in the drawing";
    EXPECT_FALSE(ShowsInRewrite("filter"));
    EXPECT_TRUE(ShowsInRewrite("nib that is not round"));
    EXPECT_FALSE(ShowsInRewrite("marker kept"));
}

}  // namespace
