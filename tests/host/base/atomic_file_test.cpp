#include "host/base/atomic_file.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "support/alloc_faults.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

std::span<const std::byte> AsBytes(const std::string& text) {
    return std::as_bytes(std::span(text));
}

std::string Content(const fs::path& path) {
    host::Error error;
    const auto bytes = host::ReadWholeFile(path, error);
    return bytes ? std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()) : "unreadable";
}

TEST(AtomicFile, ReplacesTheContentAndNothingElse) {
    testing_support::TempFolder folder;
    const fs::path path = folder / host::ToPath(L"\u20AC.txt");
    host::Error error;
    const std::string large(300'000, 'x');
    for (const std::string& text : {std::string("first"), std::string(), large, std::string("last")}) {
        ASSERT_TRUE(host::SaveAtomically(path, AsBytes(text), error)) << error.reason;
        EXPECT_EQ(Content(path), text);
        EXPECT_EQ(folder.Count(), 1u);
    }
}

TEST(AtomicFile, AFailedSaveLeavesTheOldFileAndNoStray) {
    testing_support::TempFolder folder;
    const fs::path path = folder / "kept";
    host::Error error;
    ASSERT_TRUE(host::SaveAtomically(path, AsBytes("old"), error));
    const auto rounds =
        testing_support::FailEachAllocation([&] { host::SaveAtomically(path, AsBytes("new"), error); },
                                            [&] {
                                                EXPECT_EQ(Content(path), "old");
                                                EXPECT_EQ(folder.Count(), 1u);
                                            });
    EXPECT_GT(rounds, 0u);
    EXPECT_EQ(Content(path), "new");

    fs::create_directory(folder / "sub");
    EXPECT_FALSE(host::SaveAtomically(folder / "sub", AsBytes("x"), error));
    EXPECT_EQ(error.reason, "not a regular file");
    EXPECT_FALSE(host::SaveAtomically(folder / "absent" / "file", AsBytes("x"), error));
    EXPECT_EQ(error.what, host::ToUtf8(host::FromPath(folder / "absent" / "file")));
    EXPECT_FALSE(error.reason.empty());
    EXPECT_EQ(folder.Count(), 2u);
}

#ifndef _WIN32
TEST(AtomicFile, KeepsPermissionsAndFollowsLinks) {
    testing_support::TempFolder folder;
    host::Error error;
    ASSERT_TRUE(host::SaveAtomically(folder / "real", AsBytes("old"), error));
    fs::permissions(folder / "real", fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("real", folder / "link");
    ASSERT_TRUE(host::SaveAtomically(folder / "link", AsBytes("new"), error));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(Content(folder / "real"), "new");
    EXPECT_EQ(fs::status(folder / "real").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_directory(folder / "sub");
    fs::create_symlink("../later", folder / "sub" / "dangling");
    fs::create_symlink("sub/dangling", folder / "chain");
    ASSERT_TRUE(host::SaveAtomically(folder / "chain", AsBytes("made"), error)) << error.reason;
    EXPECT_TRUE(fs::is_symlink(folder / "chain") && fs::is_symlink(folder / "sub" / "dangling"));
    EXPECT_EQ(Content(folder / "later"), "made");
    fs::create_symlink("self", folder / "self");
    EXPECT_FALSE(host::SaveAtomically(folder / "self", AsBytes("x"), error));
    EXPECT_TRUE(fs::is_symlink(folder / "self"));
    EXPECT_FALSE(host::ReadWholeFile("/dev/zero", error));
    EXPECT_FALSE(host::SaveAtomically("/dev/null", AsBytes("x"), error));
}

TEST(AtomicFile, LeavesOpenFilesUnderTheirDescriptors) {
    testing_support::TempFolder folder;
    host::Error error;
    std::FILE* const file = std::fopen((folder / "open").c_str(), "w");
    const std::string name = std::to_string(fileno(file));
    fs::create_symlink("/dev/fd/" + name, folder / "link");
    for (const fs::path& path :
         {fs::path("/dev/fd/" + name), fs::path("/proc/thread-self/fd/" + name), folder / "link"}) {
        EXPECT_FALSE(host::SaveAtomically(path, AsBytes("x"), error)) << path;
        EXPECT_EQ(error.reason, "not a regular file");
    }
    std::fputs("still the same file", file);
    std::fclose(file);
    EXPECT_EQ(Content(folder / "open"), "still the same file");
}
#endif

TEST(AtomicFile, ReadingRefusesWhatIsNoFile) {
    testing_support::TempFolder folder;
    host::Error error;
    EXPECT_FALSE(host::ReadWholeFile(folder.Path(), error));
    EXPECT_FALSE(host::ReadWholeFile(folder / "absent", error));
    EXPECT_EQ(error.what, host::ToUtf8(host::FromPath(folder / "absent")));
}

}  // namespace
