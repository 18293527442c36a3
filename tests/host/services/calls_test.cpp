#include "host/services/calls.h"

#include <gmock/gmock.h>

#include "host/services/unit_value.h"

#include "services/standalone_units.h"
#include "support/recording_services.h"

namespace {

using testing::ElementsAre;
using testing_support::RecordingServices;
using testing_support::ServicesScope;

TEST(ServicesTest, InstalledOnesReplaceTheStandalone) {
    EXPECT_EQ(&host::Installed().units, &host::Standalone().units);
    RecordingServices services;
    services.folders.application = L"/app";
    services.folders.customData = L"/data";
    services.switchesOn = {L"On"};
    {
        ServicesScope scope(services);
        EXPECT_EQ(INIGetAppDir().view(), L"/app");
        EXPECT_EQ(INIGetCustomDir().view(), L"/data");
        EXPECT_TRUE(GetHostSwitch(L"On"));
        EXPECT_FALSE(GetHostSwitch(L"Off"));
        EXPECT_FALSE(GetHostSwitch(nullptr));
    }
    EXPECT_EQ(&host::Installed().units, &host::Standalone().units);
}

TEST(ServicesTest, PreferenceStringsReadTheirDefaultUntilTheyAreSet) {
    RecordingServices services;
    ServicesScope scope(services);
    PreferenceString preference(L"Styles", L"Path", L"none");
    EXPECT_EQ(preference.Get().view(), L"none");
    EXPECT_TRUE(preference.Set(L""));
    EXPECT_EQ(preference.Get().view(), L"");
    services.preferencesCanSave = false;
    EXPECT_FALSE(preference.Set(L"x"));
    EXPECT_EQ(preference.Get().view(), L"");
}

TEST(ServicesTest, LastUsedLibraryFitsItsBuffer) {
    RecordingServices services;
    ServicesScope scope(services);
    wchar_t out[33];
    std::fill(std::begin(out), std::end(out), L'#');
    services.lastUsedLibrary = host::WString(std::wstring(40, L'n'));
    EXPECT_EQ(TXRSVR_GetLastUsedLib(out), 1);
    EXPECT_EQ(std::wstring(out), std::wstring(31, L'n'));
    EXPECT_EQ(out[32], L'#');
    services.lastUsedLibrary = host::WString();
    EXPECT_EQ(TXRSVR_GetLastUsedLib(out), 0);
    EXPECT_EQ(out[0], L'\0');
}

TEST(ServicesTest, TexturesRenderSquareOrExact) {
    RecordingServices services;
    ServicesScope scope(services);
    CGE_TXRINFO info;
    ASSERT_EQ(TXRSVR_GetLastUsedTextureInLib(nullptr, &info), 1);
    EXPECT_EQ(TXRSVR_GetLastUsedTextureInLib(L"elsewhere", &info), 0);
    EXPECT_TRUE(TXRSVR_ExecuteTextureToRImage(info, 40, 20));
    EXPECT_TRUE(TXRSVR_ExecuteTextureExactSizeToRImage(info, 40, 20));
    info.maxEdge = 33;
    EXPECT_TRUE(TXRSVR_ExecuteTextureToRImage(info, 40, 50));
    EXPECT_THAT(services.log, ElementsAre("textures.render Clouds 20x20", "textures.render Clouds 40x20",
                                          "textures.render Clouds 33x33"));
}

TEST(ServicesTest, EveryTextThatTheLibraryAsksForIsThere) {
    for (const wchar_t* identifier :
         {L"b6564889-3fc1-4fd7-a176-6a9385ca607e", L"68e85978-e7a4-4622-acf6-80abcef3b60a",
          L"c13c0002-3c13-48ad-8bfb-3b79179eaded", L"42BE80D4-7A8B-4900-A9AC-F0F9D03E19D8"})
        EXPECT_FALSE(Resources::Framework::GetString(identifier).empty());
    EXPECT_TRUE(Resources::Framework::GetString(L"no such text").empty());
    EXPECT_TRUE(Resources::Framework::GetString(nullptr).empty());
}

TEST(UnitsTest, ConvertsByOneTable) {
    RecordingServices services;
    services.rasterResolution = 254;
    ServicesScope scope(services);
    EXPECT_EQ(UNITConvertUnitToBase(host::kUnitInch, 10.0, 0.5), 127010.0);
    EXPECT_EQ(UNITConvertUnitToBase(host::kUnitMillimetre, 0.0, 25.4), 254000.0);
    EXPECT_EQ(UNITConvertUnitToBase(host::kUnitTechnicalMillimetre, 0.0, 1.0), 10000.0);
    EXPECT_EQ(UNITConvertUnitToBase(host::kUnitCentimetre, 0.0, 1.0), 100000.0);
    EXPECT_DOUBLE_EQ(UNITConvertUnitToBase(host::kUnitPoint, 0.0, 72.0), 254000.0);
    EXPECT_EQ(UNITConvertUnitToBase(host::kUnitPixel, 0.0, 3.0), 3000.0);
    EXPECT_EQ(UNITConvertUnitToBase(99, 7.0, 3.0), 7.0);
}

TEST(UnitsTest, ASmartValueReadsInTheUnitAskedFor) {
    const WSmartUnitValue value({{host::kUnitInch, 4.0}, {host::kUnitMillimetre, 100.00006}});
    EXPECT_EQ(value.GetValueForUnitBase(host::kUnitInch, 0), 1016000.0);
    EXPECT_EQ(value.GetValueForUnitBase(host::kUnitMillimetre, 1), 1000001.0);
    EXPECT_EQ(value.GetValueForUnitBase(host::kUnitPixel, 0), 1016000.0);
    EXPECT_EQ(WSmartUnitValue({}).GetValueForUnitBase(host::kUnitInch, 1), 0.0);
}

TEST(UnitsTest, TheRulerIsAPreference) {
    RecordingServices services;
    const host::StandaloneUnits units(services.Get().preferences, services.Get().graphicsEngine);
    const auto ruler = [&](const wchar_t* text) {
        services.preferences[{L"Units", L"Ruler"}] = text;
        return units.GetVerticalRulerUnit();
    };
    EXPECT_EQ(units.GetHorizontalRulerUnit(), host::kUnitMillimetre);
    EXPECT_EQ(ruler(L"Inch"), host::kUnitInch);
    EXPECT_FALSE(units.IsMetric());
    EXPECT_EQ(ruler(L"6"), host::kUnitPixel);
    EXPECT_EQ(ruler(L"furlong"), host::kUnitMillimetre);
    EXPECT_TRUE(units.IsMetric());
}

}  // namespace
