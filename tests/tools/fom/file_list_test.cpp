#include "fom/file_list.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace testing_support;
namespace fs = std::filesystem;

/// The files relative to a folder.
std::vector<std::string> Names(const command::FileList& list, const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::path& file : list.files)
        names.push_back(file.lexically_relative(folder).generic_string());
    return names;
}

using Strings = std::vector<std::string>;

TEST(FileList, SortsAndSelects) {
    const TempFolder folder;
    for (const char* name : {"b.svg", "a/z.SVG", "a/b/c.svg", "note.txt", "packed.svgz", "a.svg"})
        WriteText(folder / name, "x");
    const command::FileList list = command::ListDrawings({folder.Path()});
    EXPECT_EQ(Names(list, folder.Path()), (Strings{"a/b/c.svg", "a/z.SVG", "a.svg", "b.svg"}));
    EXPECT_EQ(list.compressed, 1u);
    EXPECT_TRUE(list.errors.empty());
    // The command line's order; any name; each file once.
    const command::FileList named =
        command::ListDrawings({folder / "note.txt", folder / "b.svg", folder.Path(), folder / "a.svg"});
    EXPECT_EQ(Names(named, folder.Path()), (Strings{"note.txt", "b.svg", "a/b/c.svg", "a/z.SVG", "a.svg"}));
}

TEST(FileList, FollowsLinksOnlyWithinThePaths) {
    const TempFolder folder, outside;
    WriteText(outside / "secret.svg", "x");
    WriteText(folder / "in" / "m.svg", "x");
    WriteText(folder / "in" / "drawing.data", "x");
    fs::create_symlink("m.svg", folder / "in" / "a_link.svg");
    fs::create_hard_link(folder / "in" / "m.svg", folder / "in" / "z_same.svg");
    fs::create_symlink("drawing.data", folder / "in" / "by_link.svg");
    fs::create_symlink(outside / "secret.svg", folder / "in" / "secret.svg");
    fs::create_directory_symlink(outside.Path(), folder / "in" / "elsewhere");
    fs::create_directory_symlink(".", folder / "in" / "self");
    fs::create_symlink("nowhere.svg", folder / "in" / "dangling.svg");
    EXPECT_EQ(Names(command::ListDrawings({folder / "in"}), folder / "in"),
              (Strings{"by_link.svg", "m.svg"}));
    // A link that is named is followed, to a file and to a folder.
    fs::create_directory_symlink("in", folder / "link");
    EXPECT_EQ(command::ListDrawings({folder / "link"}).files.size(), 2u);
    EXPECT_EQ(command::ListDrawings({folder / "in" / "secret.svg"}).files.size(), 1u);
}

TEST(FileList, SaysWhatCannotBeRead) {
    const TempFolder folder;
    fs::create_directory(folder / "empty");
    WriteText(folder / "texts" / "note.txt", "x");
    const command::FileList list = command::ListDrawings(
        {folder / "missing", folder / "empty", folder / "texts", folder / "missing" / "below.svg"});
    ASSERT_EQ(list.errors.size(), 4u);
    EXPECT_EQ(list.errors[0].what, (folder / "missing").string());
    EXPECT_EQ(list.errors[0].reason, "no such file or folder");
    EXPECT_EQ(list.errors[1].reason, "no SVG drawings in this folder");
    EXPECT_EQ(list.errors[2].reason, "no SVG drawings in this folder");
    EXPECT_TRUE(list.files.empty());
    if (geteuid() == 0) return;  // may read everything
    fs::permissions(folder / "texts", fs::perms::none);
    EXPECT_EQ(command::ListDrawings({folder / "texts"}).errors.size(), 1u);
    fs::permissions(folder / "texts", fs::perms::owner_all);
}

}  // namespace
