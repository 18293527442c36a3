#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

#include "services/standalone_preferences.h"
#include "support/recording_services.h"
#include "support/temp_folder.h"

namespace {

class PreferencesTest : public ::testing::Test {
protected:
    PreferencesTest() {
        m_services.folders.userProfileConfig = host::WString(host::FromPath(m_folder / "conf"));
    }

    void PutFile(const std::string& bytes) {
        std::filesystem::create_directories(m_folder / "conf");
        std::ofstream(Path(), std::ios::binary) << bytes;
    }
    std::string GetFile() const {
        std::ostringstream bytes;
        bytes << std::ifstream(Path(), std::ios::binary).rdbuf();
        return bytes.str();
    }
    std::filesystem::path Path() const { return m_folder / "conf" / "preferences.ini"; }
    host::StandalonePreferences Fresh() const {
        return host::StandalonePreferences(m_services.Get().folders);
    }

    testing_support::TempFolder m_folder;
    mutable testing_support::RecordingServices m_services;
};

std::wstring RandomText(std::mt19937& random) {
    constexpr wchar_t kHard[] = {L'\0',  L' ',   L'\t',  L'\n', L'\r',  L'\\',  L'=',  L'[', L']',
                                 L';',   L'#',   L'"',   L'x',  L'n',   L'a',   L'4',  L'1', 0x00E9,
                                 0x4E2D, 0xFFFD, 0xFEFF, 0x85,  0x2028, 0xD800, 0xDC00};
    std::wstring text;
    for (auto length = random() % 8; length > 0; --length)
        text += kHard[random() % std::size(kHard)];
    return text;
}

TEST_F(PreferencesTest, AnyTextComesBack) {
    std::mt19937 random(7);
    for (int i = 0; i < 60; ++i) {
        const std::wstring section = RandomText(random) + L"s", key = L"k" + RandomText(random),
                           value = RandomText(random);
        ASSERT_TRUE(Fresh().Write(section, key, value));
        const std::optional<host::WString> back = Fresh().Read(section, key);
        ASSERT_TRUE(back) << GetFile();
        EXPECT_EQ(back->str(), value) << GetFile();
    }
}

TEST_F(PreferencesTest, AWriteChangesItsOwnLineAlone) {
    PutFile("\xEF\xBB\xBF; mine\r\nstray\r\n[A]\r\nk = 1\r\n\r\n[B]\r\nK=2\r\nk=3\r\n[a]\r\nk=4");
    EXPECT_TRUE(Fresh().Write(L"b", L"k", L"new"));
    EXPECT_TRUE(Fresh().Write(L"A", L"other", L"5"));
    EXPECT_TRUE(Fresh().Write(L"C", L"c", L" 6"));
    EXPECT_EQ(
        GetFile(),
        "\xEF\xBB\xBF; mine\r\nstray\r\n[A]\r\nk = 1\r\nother=5\r\n\r\n[B]\r\nk=new\r\nk=3\r\n[a]\r\nk=4"
        "\r\n\r\n[C]\r\nc=\\x20;6\r\n");
    EXPECT_EQ(Fresh().Read(L"a", L"K")->view(), L"1");
    EXPECT_FALSE(Fresh().Read(L"A", L"c"));
}

TEST_F(PreferencesTest, TwoProcessesKeepEachOthersValues) {
    host::StandalonePreferences first = Fresh(), second = Fresh();
    EXPECT_FALSE(first.Read(L"s", L"b"));
    EXPECT_TRUE(second.Write(L"s", L"a", L"1"));
    EXPECT_TRUE(first.Write(L"s", L"b", L"2"));
    EXPECT_EQ(Fresh().Read(L"s", L"a")->view(), L"1");
    EXPECT_EQ(first.Read(L"s", L"a")->view(), L"1");
}

TEST_F(PreferencesTest, AFileOfAnotherKindIsLeftAlone) {
    for (const std::string& foreign : {std::string("[s]\nk=\xFF\n"), std::string("[s]\nk=\0\n", 8),
                                       std::string((std::size_t{4} << 20) + 1, 'x')}) {
        PutFile(foreign);
        EXPECT_FALSE(Fresh().Read(L"s", L"k"));
        EXPECT_FALSE(Fresh().Write(L"s", L"k", L"v"));
        EXPECT_TRUE(GetFile() == foreign);
    }
    std::filesystem::remove(Path());
    std::filesystem::create_directory(Path());
    EXPECT_FALSE(Fresh().Write(L"s", L"k", L"v"));
    m_services.folders.userProfileConfig.clear();
    EXPECT_FALSE(Fresh().Read(L"s", L"k"));
    EXPECT_FALSE(Fresh().Write(L"s", L"k", L"v"));
}

TEST_F(PreferencesTest, SwitchesAreOnWhenTheySaySo) {
    PutFile("[Switches]\nA=1\nB=True\nC=0\nD=\nE=yes\n");
    const host::StandalonePreferences preferences = Fresh();
    const host::StandaloneSwitches switches(preferences);
    EXPECT_TRUE(switches.IsOn(L"A"));
    EXPECT_TRUE(switches.IsOn(L"b"));
    for (const wchar_t* off : {L"C", L"D", L"E", L"F"})
        EXPECT_FALSE(switches.IsOn(off));
}

}  // namespace
