#include <algorithm>
#include <gtest/gtest.h>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

#include "fom/importer.h"

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace testing_support;

std::vector<std::string> DataFiles() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(FOM_DATA))
        if (entry.path().extension() == ".svg") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// Without what differs from run to run: the time, and the folder of the data.
std::string Steady(std::string text) {
    const std::string folder = std::string(FOM_DATA) + "/";
    for (std::size_t at; (at = text.find(folder)) != std::string::npos;)
        text.erase(at, folder.size());
    const std::size_t seconds = text.find("seconds");
    if (seconds != std::string::npos) text.erase(seconds, text.find('\n', seconds) + 1 - seconds);
    return text;
}

class Reports : public testing::TestWithParam<std::string> {};

/// Each drawing beside the report that it must give, and what stands on standard error.
TEST_P(Reports, AreExact) {
    const std::filesystem::path drawing = std::filesystem::path(FOM_DATA) / (GetParam() + ".svg");
    const CommandResult result = RunCommand({"import", drawing.string()});
    EXPECT_EQ(Steady(result.out) + Steady(result.err),
              ReadText(std::filesystem::path(drawing).replace_extension("expected")));
    EXPECT_EQ(result.exitCode, GetParam().starts_with("fault") ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Data, Reports, testing::ValuesIn(DataFiles()),
                         [](const auto& info) { return info.param; });

TEST(Import, DrawingsWithErrorsContributeNothing) {
    const std::size_t images = host::LiveImages(), entries = host::LiveTmpEntries();
    command::Importer importer;
    const auto import = [&importer](const char* name) {
        host::Error error;
        return importer.ImportFile(std::filesystem::path(FOM_DATA) / name, error);
    };
    ASSERT_TRUE(import("solid.svg"));
    const std::size_t fills = importer.Document().Pool()->GetCount();
    for (const char* name :
         {"fault_image.svg", "fault_cut_off.svg", "fault_circle.svg", "fault_pattern_circle.svg"})
        EXPECT_FALSE(import(name)) << name;
    EXPECT_EQ(importer.Document().ShapeCount(), 5u);
    EXPECT_EQ(importer.Document().Pool()->GetCount(), fills);
    EXPECT_EQ(importer.Tally().texts.Count(), 3u);
    EXPECT_TRUE(importer.Tally().omissions.Counts().empty());
    EXPECT_EQ(host::LiveImages(), images);
    EXPECT_EQ(host::LiveTmpEntries(), entries);

    // Patterns are recognised in further drawings, and are let go of in the end.
    ASSERT_TRUE(import("pattern.svg"));
    EXPECT_EQ(importer.Document().Pool()->GetCount(), fills + 3);
    const std::size_t patterns = host::LiveTmpEntries();
    ASSERT_TRUE(import("pattern.svg"));
    EXPECT_EQ(importer.Document().Pool()->GetCount(), fills + 3);
    EXPECT_EQ(host::LiveTmpEntries(), patterns);
    EXPECT_EQ(importer.Tally().omissions.Of("pattern content measured apart from its tile"), 2u);
    importer.Finish();
    long uses = 0;
    importer.Document().Pool()->Enumerate([&uses](const WRefCountFill* fill) {
        uses += fill->GetReference();
        return true;
    });
    EXPECT_EQ(uses, static_cast<long>(importer.Document().ShapeCount()));
}

TEST(Import, LetsGoOfOutlinesOfDrawingsWithErrors) {
    const TempFolder folder;
    const std::string good = R"(<svg xmlns="http://www.w3.org/2000/svg"><path d="M0 0h5" stroke="red"/>)";
    WriteText(folder / "a.svg", good + R"(<path d="M0 0h5"/></svg>)");
    WriteText(folder / "b.svg", good + R"(<path d="M0 0h5" stroke="blue"/><use id="u" href="#u"/></svg>)");
    command::Importer importer;
    host::Error error;
    const auto outlines = [&importer] {
        std::pair<std::size_t, long> result;
        importer.Document().OutlinePool().Enumerate([&result](const WRefCountOutline* outline) {
            ++result.first;
            result.second += outline->GetReference();
            return true;
        });
        return result;
    };
    EXPECT_FALSE(importer.ImportFile(folder / "b.svg", error));
    EXPECT_EQ(importer.Document().OutlinePool().GetCount(), 0u);
    EXPECT_TRUE(importer.ImportFile(folder / "a.svg", error));
    EXPECT_FALSE(importer.ImportFile(folder / "b.svg", error));
    EXPECT_EQ(outlines(), std::pair(std::size_t{1}, 1L)) << "the empty handle has no part in the pool";
}

TEST(Import, RefusesHostileDrawings) {
    const TempFolder folder;
    std::string nested = "<svg xmlns=\"http://www.w3.org/2000/svg\">";
    for (int i = 0; i < 1'000'000; ++i)
        nested += "<g>";
    WriteText(folder / "nested.svg", nested);
    for (int i = 0; i < 1'000'000; ++i)
        nested += "</g>";
    WriteText(folder / "nested_well.svg", nested + "</svg>");
    std::string uses = "<svg xmlns=\"http://www.w3.org/2000/svg\"><defs><path id=\"u0\" d=\"M0 0h1v1z\"/>";
    for (int i = 1; i < 30; ++i) {
        const std::string use = "<use href=\"#u" + std::to_string(i - 1) + "\"/>";
        uses += "<g id=\"u" + std::to_string(i) + "\">" + use + use + "</g>";
    }
    WriteText(folder / "uses.svg", uses + "</defs><use href=\"#u29\"/></svg>");
    const CommandResult result = RunCommand({"import", folder.Path().string()});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 3) << result.err;
    EXPECT_NE(result.err.find("nested_well.svg:1: elements nested deeper"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("uses.svg:1: \"use\" multiplies"), std::string::npos) << result.err;
    EXPECT_NE(result.out.find("3 failed"), std::string::npos);
}

TEST(Import, MeasuresHeapOfFillsAlone) {
    static std::int64_t held;
    held = 0;
    const std::string solid = (std::filesystem::path(FOM_DATA) / "solid.svg").string();
    // A gauge that moves by 50 whenever it is read: five shapes, read before and after each.
    const CommandResult result = RunCommand({"import", solid}, [] { return held += 50; });
    EXPECT_NE(result.out.find("heap bytes per fill              83\n"), std::string::npos) << result.out;
}

}  // namespace
