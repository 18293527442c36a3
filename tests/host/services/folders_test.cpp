#include <gtest/gtest.h>

#include "scoped_environment.h"
#include "services/platform_folders.h"
#include "services/standalone_folders.h"

namespace {

using testing_support::ScopedEnvironment;

std::string Text(const host::WString& folder) {
    return host::ToPath(folder).generic_string();
}

TEST(FoldersTest, OneHomeHoldsThemAll) {
    ScopedEnvironment home("FOM_HOME", "/some/home/");
    const host::StandaloneFolders folders;
    EXPECT_EQ(Text(folders.GetUserCustom()), "/some/home/custom");
    EXPECT_EQ(Text(folders.GetUserProfileConfig()), "/some/home/config");
    EXPECT_EQ(Text(folders.GetCustomData()), "/some/home/customdata");
    EXPECT_EQ(Text(folders.GetUserCustomData()), "/some/home/usercustomdata");
    EXPECT_EQ(Text(folders.GetApplication()), "/some/home/app");
    EXPECT_EQ(Text(folders.GetFills()), "/some/home/fills");
    ASSERT_EQ(folders.GetFillsFolders().size(), 2u);
    EXPECT_EQ(Text(folders.GetFillsFolders()[1]), "/some/home/app/fills");
}

TEST(FoldersTest, TheModuleIsFound) {
    ScopedEnvironment home("FOM_HOME", nullptr);
    EXPECT_TRUE(std::filesystem::is_regular_file(host::ModulePath()));
    EXPECT_TRUE(host::ToPath(host::StandaloneFolders().GetApplication()).is_absolute());
}

#ifndef _WIN32
TEST(FoldersTest, UserFoldersFollowTheEnvironment) {
    ScopedEnvironment home("FOM_HOME", nullptr);
    ScopedEnvironment user("HOME", "/users/me");
    ScopedEnvironment data("XDG_DATA_HOME", "/data");
    // A relative folder counts as not set.
    ScopedEnvironment config("XDG_CONFIG_HOME", "relative");
    const host::StandaloneFolders folders;
    EXPECT_EQ(Text(folders.GetUserCustomData()), "/data/fom/customdata");
    EXPECT_EQ(Text(folders.GetUserProfileConfig()), "/users/me/.config/fom");
}

TEST(FoldersTest, WithoutAUserThereAreNoUserFolders) {
    ScopedEnvironment home("FOM_HOME", "");
    ScopedEnvironment user("HOME", nullptr);
    ScopedEnvironment data("XDG_DATA_HOME", nullptr);
    ScopedEnvironment config("XDG_CONFIG_HOME", nullptr);
    const host::StandaloneFolders folders;
    EXPECT_TRUE(folders.GetUserCustom().empty());
    EXPECT_TRUE(folders.GetUserProfileConfig().empty());
    EXPECT_TRUE(folders.GetFills().empty());
    EXPECT_EQ(folders.GetFillsFolders().size(), 1u);
}
#endif

}  // namespace
