#include "host/profile/profile_file.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "support/temp_folder.h"

namespace {

using namespace std::string_literals;

class ProfileFileTest : public ::testing::Test {
protected:
    std::wstring Read(const std::string& bytes, std::wstring_view section, std::wstring_view key) const {
        const std::filesystem::path path = m_folder / "a.ini";
        std::ofstream(path, std::ios::binary) << bytes;
        return host::ReadProfileString(host::FromPath(path), section, key, L"DEF").str();
    }
    /// The value of line `line` in section "sec" for key "key".
    std::wstring Value(const std::string& line) const {
        return Read("[sec]\r\n" + line + "\r\n", L"sec", L"key");
    }

    testing_support::TempFolder m_folder;
};

TEST_F(ProfileFileTest, BlanksAndQuotesAroundValuesGo) {
    EXPECT_EQ(Value("\t key\t= value  "), L"value");
    EXPECT_EQ(Value("key=     "), L"");
    EXPECT_EQ(Value("key=\"  value  \"  "), L"  value  ");
    EXPECT_EQ(Value("key='\tvalue '\t"), L"\tvalue ");
    EXPECT_EQ(Value("key=\"\"twice\"\""), L"\"twice\"");
    EXPECT_EQ(Value("key=\"a\" \"b\""), L"a\" \"b");
    EXPECT_EQ(Value("key='value\""), L"'value\"");
    EXPECT_EQ(Value("key=value'"), L"value'");
    EXPECT_EQ(Value("key=\""), L"\"");
    EXPECT_EQ(Value("key=''"), L"");
}

TEST_F(ProfileFileTest, OnlyWholeLinesAreComments) {
    EXPECT_EQ(Value(";key=off\r\nkey=value ; note"), L"value ; note");
    EXPECT_EQ(Value("key==a=b;c"), L"=a=b;c");
    EXPECT_EQ(Value("key\r\nkey=second"), L"second");
    EXPECT_EQ(Read("[sec]\r\n#key=hashed\r\n", L"sec", L"#key"), L"hashed");
}

TEST_F(ProfileFileTest, NamesMatchWithoutCaseOrBlanksAndTheFirstWins) {
    const std::string text =
        "top=1\n[ SeC ]   \nKeY=1\nkey=2\n[other]\nkey=3\n   [sec]\nlate=4\n[\"sec\"]\nkey=5\n";
    EXPECT_EQ(Read(text, L"\tsec ", L" key\t"), L"1");
    EXPECT_EQ(Read(text, L"OTHER", L"KEY"), L"3");
    EXPECT_EQ(Read(text, L"sec", L"late"), L"DEF");
    EXPECT_EQ(Read(text, L"\"sec\"", L"key"), L"5");
    EXPECT_EQ(Read(text, L"[sec]", L"key"), L"DEF");
    EXPECT_EQ(Read(text, L"", L"top"), L"DEF");
    EXPECT_EQ(Read("[sec\r\nkey=value\r\n", L"sec", L"key"), L"DEF");
    EXPECT_EQ(Read("[sec\r\nkey=value\r\n", L"[sec", L"key"), L"DEF");
}

TEST_F(ProfileFileTest, EncodingsAreTold) {
    const std::string utf16 = "\xFF\xFE[\0s\0]\0\r\0\n\0k\0\xE9\0=\0-N\0"s;
    EXPECT_EQ(Read(utf16.substr(0, utf16.size() - 1), L"s", L"K\u00C9"), L"\u4E2D"s);
    EXPECT_EQ(Read("\xFE\xFF\0[\0s\0]\0\n\0k\0=N-"s, L"s", L"k"), L"\u4E2D"s);
    EXPECT_EQ(Read("\xEF\xBB\xBF[s]\nk=\xC3\xA9", L"s", L"k"), L"\u00E9");
    EXPECT_EQ(Read("[s]\nk=\xE4\xB8\xAD", L"s", L"k"), L"\u4E2D");
    EXPECT_EQ(Read("[s]\nk=\xE9", L"s", L"k"), L"\u00E9");
    EXPECT_EQ(Read("", L"s", L"k"), L"DEF");
}

TEST_F(ProfileFileTest, WhatIsNoFileGivesTheFallback) {
    for (const char* name : {"missing", "missing/deeper", "."})
        EXPECT_EQ(host::ReadProfileString(host::FromPath(m_folder / name), L"s", L"k", L"DEF").view(),
                  L"DEF");
    EXPECT_EQ(host::ReadProfileString(L"", L"s", L"k", L"DEF").view(), L"DEF");
}

}  // namespace
