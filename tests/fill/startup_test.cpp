#include "fom/startup.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "host/base/singleton.h"

#include "fom/globals.h"

#include "support/alloc_faults.h"
#include "support/recording_services.h"
#include "support/temp_folder.h"

namespace {

using Log = std::vector<std::string>;
namespace fs = std::filesystem;

class Startup : public ::testing::Test {
protected:
    Startup() {
        services.texts[L"b6564889-3fc1-4fd7-a176-6a9385ca607e"] = L"no textures";
        services.folders.customData = host::FromPath(shared);
        services.folders.userCustomData = host::FromPath(own);
        fs::create_directories(shared);
    }
    /// One start and stop; what the catalogue was in between.
    VyrFOM::TextureCatalogue Start() {
        EXPECT_EQ(FOMInitialize(1, 0), 1);
        const VyrFOM::TextureCatalogue catalogue = VyrFOM::GetTextureCatalogue();
        FOMShutdown();
        return catalogue;
    }
    static void Write(const fs::path& path, const char* text) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    static std::string Read(const fs::path& path) {
        return (std::ostringstream() << std::ifstream(path).rdbuf()).str();
    }

    testing_support::TempFolder folder;
    const fs::path shared = folder / "shared", own = folder / "own" / "data";
    testing_support::RecordingServices services;
    testing_support::ServicesScope scope{services};
};

TEST_F(Startup, OrderOfStartAndStop) {
    services.filtersStarted = true;
    EXPECT_EQ(FOMInitialize(0, 42), 1);
    EXPECT_EQ(FOMInitialize(1, 43), 1);
    EXPECT_EQ(services.log, (Log{"engine.start 42", "interface.start", "arrowheads.load"}));
    services.log.clear();
    FOMShutdown();
    EXPECT_EQ(services.log, Log{});
    FOMShutdown();
    EXPECT_EQ(services.log, (Log{"arrowheads.free", "filters.shutdown", "interface.stop", "engine.stop"}));
}

TEST_F(Startup, AnInterfaceThatDoesNotStartRestoresTheCount) {
    services.interfaceStarts = false;
    EXPECT_EQ(FOMInitialize(1, 0), 0);
    EXPECT_EQ(services.log, (Log{"engine.start 0", "interface.start"}));
    services.interfaceStarts = true;
    EXPECT_EQ(FOMInitialize(0, 0), 1);
    services.log.clear();
    FOMShutdown();
    EXPECT_EQ(services.log, (Log{"arrowheads.free", "interface.stop", "engine.stop"}));
}

TEST_F(Startup, OneStopTooManyWrapsTheCount) {
    FOMShutdown();
    EXPECT_EQ(services.log, Log{});
    EXPECT_EQ(FOMInitialize(0, 0), 1);  // wraps back to 0 without a start
    EXPECT_EQ(services.log, Log{});
    Start();
    EXPECT_FALSE(services.log.empty());
}

TEST_F(Startup, SingletonsAreGoneAfterTheStopAndBackAfterTheNextStart) {
    using Single = VyrUtils::Singleton<std::string>;
    FOMInitialize(0, 0);
    ASSERT_NE(Single::GetInstance(), nullptr);
    FOMShutdown();
    EXPECT_EQ(Single::GetInstance(), nullptr);
    FOMInitialize(0, 0);
    EXPECT_NE(Single::GetInstance(), nullptr);
    FOMShutdown();
}

TEST_F(Startup, AMissingTextureLibraryWarns) {
    EXPECT_EQ(FOMInitialize(1, 0), 1);
    EXPECT_EQ(services.log,
              (Log{"engine.start 0", "interface.start", "interface.warn no textures", "arrowheads.load"}));
    FOMShutdown();
    EXPECT_EQ(VyrFOM::GetTextureCatalogue().libraryFile.str(), host::FromPath(shared / "texture.txr"));
    EXPECT_FALSE(fs::exists(own));
}

TEST_F(Startup, SharedTexturesAreCopiedForTheUserOnce) {
    Write(shared / "texture.txr",
          "[Header]\nStylesLibraryName= \"A styles library with a name beyond 31\"\n");
    Write(shared / "library.txr", "styles");
    Write(own / "library.txr", "mine");
    const VyrFOM::TextureCatalogue catalogue = Start();
    EXPECT_EQ(catalogue.libraryFile.str(), host::FromPath(own / "texture.txr"));
    EXPECT_EQ(catalogue.stylesLibraryFile.str(), host::FromPath(own / "library.txr"));
    EXPECT_EQ(catalogue.stylesLibraryName.str(), L"A styles library with a name be");
    EXPECT_EQ(catalogue.sectionCodes[4].str(), L"F");
    EXPECT_EQ(catalogue.limits, (std::array<std::int32_t, 2>{129, 129}));
    EXPECT_EQ(Read(own / "library.txr"), "mine");  // never overwritten

    Write(own / "texture.txr", "[Header]\nStylesLibraryName=Mine\n");
    fs::remove(own / "library.txr");
    EXPECT_EQ(Start().stylesLibraryName.str(), L"Mine");
    EXPECT_FALSE(fs::exists(own / "library.txr"));  // the user's library was found: nothing is prepared
    EXPECT_NE(TXR_PrepForUserChanges(), 0);
    EXPECT_EQ(Read(own / "texture.txr"), "[Header]\nStylesLibraryName=Mine\n");
}

TEST_F(Startup, TexturesThatCannotBeCopiedStayWhereTheyAre) {
    Write(shared / "texture.txr", "");
    Write(folder / "own", "a file where the folder should be");
    EXPECT_EQ(Start().libraryFile.str(), host::FromPath(shared / "texture.txr"));
    EXPECT_EQ(TXR_PrepForUserChanges(), 0);
}

TEST_F(Startup, AStartThatRunsOutOfMemoryLeavesNothingRunning) {
    Write(shared / "texture.txr", "");
    const std::wstring before = VyrFOM::GetTextureCatalogue().libraryFile.str();
    const auto count = [&](const char* call) {
        return std::count(services.log.begin(), services.log.end(), call);
    };
    const auto failures = testing_support::FailEachAllocation(
        [&] { FOMInitialize(1, 0); },
        [&] {
            EXPECT_EQ(count("engine.start 0"), count("engine.stop"));
            EXPECT_EQ(count("interface.start"), count("interface.stop"));
            EXPECT_EQ(VyrFOM::GetTextureCatalogue().libraryFile.str(), before);
            services.log.clear();
        });
    EXPECT_GT(failures, 5u);
    EXPECT_EQ(count("engine.start 0"), 1);
    FOMShutdown();
    EXPECT_EQ(count("engine.stop"), 1);
}

TEST_F(Startup, TheHostsColorContextStandsInUntilOneIsSet) {
    EXPECT_EQ(&GetColorContext(), &ColorContext::GetActiveColorContext());
    SetColorContext(ColorContext::Uncalibrated());
    EXPECT_NE(&GetColorContext(), &ColorContext::GetActiveColorContext());
    SetColorContext(ColorContext());
    EXPECT_EQ(&GetColorContext(), &ColorContext::GetActiveColorContext());
}

}  // namespace
