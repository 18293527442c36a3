#include "host/services/calls.h"

#include <algorithm>
#include <string_view>

namespace {

/// The longest name that a texture description holds, in UTF-16 units.
constexpr std::size_t kNameUnits = 31;

std::wstring_view ViewOf(const wchar_t* text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

}  // namespace

host::WString GetUserProfileCustomDir() {
    return host::Installed().folders.GetUserCustom();
}

host::WString GetUserProfileConfigDir() {
    return host::Installed().folders.GetUserProfileConfig();
}

host::WString INIGetAppDir() {
    return host::Installed().folders.GetApplication();
}

host::WString INIGetCustomDir() {
    return host::Installed().folders.GetCustomData();
}

bool GetHostSwitch(const wchar_t* name) {
    return name && host::Installed().switches.IsOn(name);
}

double UNITConvertUnitToBase(int unit, double origin, double value) {
    return origin + value * host::Installed().units.GetBaseLength(unit);
}

std::uint16_t UDIGetRasterDPI() {
    return host::Installed().graphicsEngine.GetRasterResolution();
}

HMEM ARRGetArrowheadHandle(unsigned index) {
    return host::Installed().arrowheads.GetHandle(index);
}

int ARRAreArrowsSame(HMEM a, HMEM b) {
    return host::Installed().arrowheads.AreSame(a, b) ? 1 : 0;
}

unsigned ARRGetNumberOfArrowheads() {
    return host::Installed().arrowheads.GetCount();
}

void FreeArrowList() {
    host::Installed().arrowheads.Free();
}

int TXRSVR_GetLastUsedLib(wchar_t* out) {
    if (!out) return 0;
    const host::WString name = host::Installed().textureEngine.GetLastUsedLibrary();
    const std::wstring_view cut = host::CutUtf16(name, kNameUnits);
    *std::copy(cut.begin(), cut.end(), out) = L'\0';
    return cut.empty() ? 0 : 1;
}

int TXRSVR_GetLastUsedTextureInLib(const wchar_t* library, CGE_TXRINFO* info) {
    return info && host::Installed().textureEngine.GetLastUsedTexture(ViewOf(library), *info) ? 1 : 0;
}

std::unique_ptr<RIMAGE> TXRSVR_ExecuteTextureToRImage(const CGE_TXRINFO& info, std::uint32_t width,
                                                      std::uint32_t height) {
    std::uint32_t edge = std::min(width, height);
    if (info.maxEdge != 0) edge = std::min<std::uint32_t>(edge, info.maxEdge);
    return host::Installed().textureEngine.Render(info, edge, edge);
}

std::unique_ptr<RIMAGE> TXRSVR_ExecuteTextureExactSizeToRImage(const CGE_TXRINFO& info, std::uint32_t width,
                                                               std::uint32_t height) {
    return host::Installed().textureEngine.Render(info, width, height);
}

HUDIIMAGE GetImageUsingName(const wchar_t* name) {
    return name ? host::Installed().patternImages.GetImage(name) : nullptr;
}

host::WString Resources::Framework::GetString(const wchar_t* identifier) {
    return identifier ? host::Installed().resourceStrings.GetString(identifier) : host::WString();
}
