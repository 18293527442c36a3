#include "fom/fill_files.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "host/engines/fill_container.h"

#include "support/recording_services.h"
#include "support/temp_folder.h"

namespace {

using String = VyrPlatform::VyrStringT<wchar_t>;
using Subtype = host::FillContainerSubtype;
namespace fs = std::filesystem;

class FillFiles : public ::testing::Test {
protected:
    FillFiles() {
        services.folders.fills = L"fills";
        for (const char* name : {"one", "missing", "two"})
            services.folders.fillsFolders.push_back(host::FromPath(folder / name));
        services.folders.fillsFolders.push_back(L"");
        fs::create_directories(folder / "one" / "folder.fill");
        fs::create_directories(folder / "two");
    }
    void Add(const char* path, Subtype subtype) {
        host::Error error;
        ASSERT_TRUE(host::WriteFillContainer(folder / path, {subtype, {}}, error));
    }
    std::wstring Path(const char* path) { return host::FromPath(folder / path); }
    std::wstring Nth(int n, CgeFillType kind) { return GetNthFilename(n, kind).str(); }
    std::wstring& Stored() { return services.preferences[{L"Styles", L"DefaultBitmapFillPath"}]; }

    testing_support::TempFolder folder;
    testing_support::RecordingServices services;
    testing_support::ServicesScope scope{services};
};

TEST_F(FillFiles, CountsFilesOfOneKindOverAllFolders) {
    Add("two/a.fill", Subtype::ColorBitmap);
    Add("one/Zebra.FILL", Subtype::ColorBitmap);
    Add("one/apple.fill", Subtype::ColorBitmap);
    Add("one/Banana.fill", Subtype::Vector);
    Add("one/other.txt", Subtype::ColorBitmap);
    Add("one/image.png", Subtype::ColorBitmap);
    std::ofstream(folder / "one" / "broken.fill") << "no container";
    EXPECT_EQ(Nth(0, FillColorBitmap), Path("one/apple.fill"));
    EXPECT_EQ(Nth(1, FillColorBitmap), Path("one/image.png"));  // what a filter reads is looked at too
    EXPECT_EQ(Nth(2, FillColorBitmap), Path("one/Zebra.FILL"));
    EXPECT_EQ(Nth(3, FillColorBitmap), Path("two/a.fill"));
    EXPECT_EQ(Nth(4, FillColorBitmap), L"");
    EXPECT_EQ(Nth(-1, FillColorBitmap), L"");
    EXPECT_EQ(Nth(0, FillVector), Path("one/Banana.fill"));
    EXPECT_EQ(Nth(0, FillFountain), L"");
    EXPECT_EQ(Nth(0, FillTexture), L"");
    services.filtersAvailable = false;
    EXPECT_EQ(Nth(1, FillColorBitmap), Path("one/Zebra.FILL"));
}

TEST_F(FillFiles, DefaultFileFallsBackToTheFirstOneButNotForFountains) {
    Add("one/bitmap.fill", Subtype::ColorBitmap);
    Add("one/fountain.fill", Subtype::Fountain);
    EXPECT_EQ(GetFillFilePathForType(FillColorBitmap).str(), Path("one/bitmap.fill"));
    EXPECT_EQ(Stored(), Path("one/bitmap.fill"));
    SetFillFilePathForType(FillColorBitmap, Path("one/fountain.fill"));
    EXPECT_EQ(GetFillFilePathForType(FillColorBitmap).str(), Path("one/fountain.fill"));

    SetFillFilePathForType(FillFountain, Path("one/gone.fill"));
    EXPECT_EQ(GetFillFilePathForType(FillFountain).str(), L"");
    EXPECT_EQ((services.preferences[{L"Styles", L"DefaultFountainFillPath"}]), L"");

    const auto before = services.preferences;
    SetFillFilePathForType(FillTexture, Path("one/bitmap.fill"));
    EXPECT_EQ(GetFillFilePathForType(FillTexture).str(), L"");
    EXPECT_EQ(services.preferences, before);
}

TEST_F(FillFiles, ADefaultThatIsGoneAndHasNoSuccessorIsForgotten) {
    Stored() = Path("one/folder.fill");  // a folder is no file
    EXPECT_EQ(GetFillFilePathForType(FillColorBitmap).str(), L"");
    EXPECT_EQ(Stored(), L"");
    EXPECT_EQ(GetBitmapsDirectory().str(), L"fills");
    EXPECT_EQ(GetVectorsDirectory().str(), L"fills");
}

}  // namespace
