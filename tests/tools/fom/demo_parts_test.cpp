#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "fom/demo_folder.h"
#include "fom/demo_jobs.h"
#include "fom/demo_page.h"
#include "fom/demo_sample.h"
#include "fom/demo_summary.h"

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace command;
using namespace testing_support;
using nlohmann::json;

std::vector<std::string> Taken(const std::vector<std::string>& names, std::size_t count) {
    std::vector<std::string> taken;
    for (const std::size_t place : PickSample(names, count))
        taken.push_back(names[place]);
    std::sort(taken.begin(), taken.end());
    return taken;
}

TEST(DemoSample, IsTheSameEverywhere) {
    std::vector<std::string> names;
    for (int i = 0; i < 200; ++i)
        names.push_back("folder/drawing" + std::to_string(i) + ".svg");
    const std::vector<std::string> taken = Taken(names, 20);
    EXPECT_EQ(taken.size(), 20u);
    // Of another machine: md5 of each name, sorted.
    EXPECT_EQ(Taken(names, 3), (std::vector<std::string>{"folder/drawing106.svg", "folder/drawing185.svg",
                                                         "folder/drawing186.svg"}));
    std::reverse(names.begin(), names.end());
    EXPECT_EQ(Taken(names, 20), taken);
    names.push_back("one more.svg");
    std::vector<std::string> gone;
    const std::vector<std::string> now = Taken(names, 20);
    std::set_difference(taken.begin(), taken.end(), now.begin(), now.end(), std::back_inserter(gone));
    EXPECT_LE(gone.size(), 1u);
    EXPECT_EQ(PickSample(names, 1000).size(), names.size());
}

DemoDrawing Drawing(const char* name, Outcome outcome, std::size_t excess = 0,
                    std::set<std::string> reasons = {}) {
    DemoDrawing drawing;
    drawing.name = name;
    drawing.outcome = outcome;
    drawing.reasons = std::move(reasons);
    drawing.difference = {
        .pixels = 1000, .differing = excess, .excess = excess, .worst = excess > 0 ? 9u : 0u};
    return drawing;
}

/// One that has passed.
DemoResult Result() {
    DemoResult result;
    result.drawings = {Drawing("same", Outcome::Identical), Drawing("near", Outcome::Within, 1, {"dashes"}),
                       Drawing("far", Outcome::Outside, 500, {"dashes", "mid marker"}),
                       Drawing("farther", Outcome::Outside, 600, {"dashes"}),
                       Drawing("odd", Outcome::NotDrawn)};
    result.found = 7;
    result.shapes = 40;
    result.documentBytes = 100;
    result.selfCheck.passed = true;
    result.seconds = {{"import", 1}, {"compare", 2.5}};
    return result;
}

TEST(DemoSummary, AddsUp) {
    DemoResult result = Result();
    SortByDifference(result.drawings);
    const json summary = json::parse(ToJson(result));
    EXPECT_EQ(summary["passed"], true);
    EXPECT_EQ(summary["compared"], 4);
    EXPECT_EQ(summary["identical"], 1);
    EXPECT_EQ(summary["withinTolerance"], 2);
    EXPECT_EQ(summary["shareWithin"], 0.5);
    EXPECT_EQ(summary["outside"], 2);
    EXPECT_EQ(summary["unexplained"], 0);
    EXPECT_EQ(summary["notDrawn"], 1);
    EXPECT_EQ(summary["document"]["bytesPerShape"], 2.5);
    EXPECT_EQ(summary["reasons"]["dashes"], (json{{"outside", 2}, {"within", 1}}));
    EXPECT_EQ(summary["reasons"]["mid marker"], (json{{"outside", 1}, {"within", 0}}));
    std::vector<std::string> order;
    for (const json& drawing : summary["results"])
        order.push_back(drawing["name"]);
    EXPECT_EQ(order, (std::vector<std::string>{"farther", "far", "near", "odd", "same"}));
    EXPECT_EQ(summary["results"][0]["shareBeyondTolerance"], 0.6);
    EXPECT_NE(ToText(result).find("50.00 %"), std::string::npos) << ToText(result);
}

TEST(DemoSummary, FailsForEachFault) {
    const auto passes = [](auto&& change) {
        DemoResult result = Result();
        change(result);
        return HasPassed(result, Sum(result.drawings));
    };
    EXPECT_TRUE(passes([](DemoResult&) {}));
    EXPECT_FALSE(passes([](DemoResult& r) { r.drawings.push_back(Drawing("x", Outcome::Failed)); }));
    EXPECT_FALSE(passes([](DemoResult& r) { r.drawings.push_back(Drawing("x", Outcome::Outside, 300)); }));
    EXPECT_TRUE(passes([](DemoResult& r) { r.drawings.push_back(Drawing("x", Outcome::Within, 1)); }));
    EXPECT_FALSE(passes([](DemoResult& r) { r.selfCheck.passed = false; }));
    EXPECT_FALSE(passes([](DemoResult& r) { r.notRead = 1; }));
    EXPECT_FALSE(passes([](DemoResult& r) { r.drawings.clear(); }));
}

TEST(DemoPage, HoldsWhateverNamesDo) {
    DemoResult result = Result();
    const std::string hostile = "</script><!--<img src=x onerror=alert(1)> {{summary}} \\ \" ' & \xff.svg";
    result.drawings[0].name = hostile;
    const std::string summary = ToJson(result);
    const std::string page = DemoPage(summary);
    const std::string opening = "<script type=\"application/json\" id=\"data\">";
    const std::size_t first = page.find(opening) + opening.size();
    const std::size_t last = page.find("</script>", first);
    const std::string data = page.substr(first, last - first);
    EXPECT_EQ(data.find('<'), std::string::npos);
    EXPECT_EQ(json::parse(data), json::parse(summary));
    EXPECT_EQ(page.find("http:"), std::string::npos) << "nothing of the network";
    EXPECT_EQ(page.find("https:"), std::string::npos);
}

TEST(DemoFolder, ReplacesOnlyWhatADemoWrote) {
    const TempFolder temp;
    host::Error error;
    DemoFolder folder(temp / "out");
    EXPECT_TRUE(folder.Prepare(false, error)) << "a new one";
    EXPECT_TRUE(folder.Prepare(false, error)) << "an empty one";
    ASSERT_TRUE(folder.Mark({"a/b.svg", "../../beside.svg"}, error));
    WriteText(folder.Rewritten() / "a/b.svg", "old");
    WriteText(folder.Rewritten() / "a/own.svg", "not of the demo");
    WriteText(temp / "beside.svg", "not of the demo");
    WriteText(folder.Pictures() / "00012-after.png", "old");
    WriteText(folder.Pictures() / "12-after.png", "not of the demo");
    WriteText(folder.Document(), "old");
    EXPECT_FALSE(folder.Prepare(false, error));
    EXPECT_NE(error.reason.find("--force"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(folder.Document()));
    EXPECT_TRUE(folder.Prepare(true, error));
    EXPECT_FALSE(std::filesystem::exists(folder.Document()));
    EXPECT_FALSE(std::filesystem::exists(folder.Rewritten() / "a/b.svg"));
    EXPECT_FALSE(std::filesystem::exists(folder.Pictures() / "00012-after.png"));
    EXPECT_TRUE(std::filesystem::exists(folder.Rewritten() / "a/own.svg"));
    EXPECT_TRUE(std::filesystem::exists(folder.Pictures() / "12-after.png"));
    EXPECT_TRUE(std::filesystem::exists(temp / "beside.svg"));

    for (const char* summary : {"{}", "[1]", "{\"madeBy\":\"another\"}", "{\"madeBy\":", ""}) {
        WriteText(folder.Summary(), summary);
        EXPECT_FALSE(folder.Prepare(true, error)) << summary;
    }
    WriteText(temp / "file", "text");
    EXPECT_FALSE(DemoFolder(temp / "file").Prepare(true, error));
}

TEST(DemoJobs, DoesEachOnceAndPassesFaultsOn) {
    std::vector<std::atomic<int>> times(500);
    std::size_t last = 0;
    RunJobs(
        times.size(), 4, [&times](std::size_t i) { ++times[i]; }, [&last](std::size_t done) { last = done; });
    EXPECT_TRUE(std::all_of(times.begin(), times.end(), [](const auto& count) { return count == 1; }));
    EXPECT_EQ(last, times.size());
    RunJobs(
        0, 4, [](std::size_t) { FAIL(); }, [](std::size_t) {});
    const auto work = [](std::size_t i) {
        if (i == 3) throw std::runtime_error("no room");
    };
    EXPECT_THROW(RunJobs(100, 2, work, [](std::size_t) {}), std::runtime_error);
}

}  // namespace
