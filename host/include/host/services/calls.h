#pragma once

#include <cstdint>

#include "host/base/wstring.h"
#include "host/services/services.h"

/// The services by the names that the library calls them by. Thin: each asks host::Installed().

FOM_API host::WString GetUserProfileCustomDir();
FOM_API host::WString GetUserProfileConfigDir();
FOM_API host::WString INIGetAppDir();
FOM_API host::WString INIGetCustomDir();
FOM_API bool GetHostSwitch(const wchar_t* name);
/// `value` of `unit` in document units, added to `origin`.
FOM_API double UNITConvertUnitToBase(int unit, double origin, double value);
FOM_API std::uint16_t UDIGetRasterDPI();

FOM_API HMEM ARRGetArrowheadHandle(unsigned index);
FOM_API int ARRAreArrowsSame(HMEM a, HMEM b);
FOM_API unsigned ARRGetNumberOfArrowheads();
FOM_API void FreeArrowList();

/// Writes at most 31 UTF-16 units and a terminator; empty when no library was used yet. Non-zero when there
/// is one.
FOM_API int TXRSVR_GetLastUsedLib(wchar_t* out);
/// Non-zero when `info` was filled with the texture used last; a null or empty library is the default one.
FOM_API int TXRSVR_GetLastUsedTextureInLib(const wchar_t* library, CGE_TXRINFO* info);
/// Renders at most `width` by `height`, and at most the texture's tile edge where it states one, keeping the
/// texture's own proportions (square). Null when the texture is not known.
FOM_API std::unique_ptr<RIMAGE> TXRSVR_ExecuteTextureToRImage(const CGE_TXRINFO& info, std::uint32_t width,
                                                              std::uint32_t height);
/// Renders `width` by `height`, whatever the proportions.
FOM_API std::unique_ptr<RIMAGE> TXRSVR_ExecuteTextureExactSizeToRImage(const CGE_TXRINFO& info,
                                                                       std::uint32_t width,
                                                                       std::uint32_t height);

/// A new reference on a registered bitmap pattern's image; null for an unknown or null name.
FOM_API HUDIIMAGE GetImageUsingName(const wchar_t* name);

namespace Resources {
class FOM_API Framework {
public:
    static host::WString GetString(const wchar_t* identifier);
};
}  // namespace Resources

/// A preference string bound to its section and key: reading gives the stored value or the default. The texts
/// it is made with must outlive it.
class FOM_API PreferenceString {
public:
    PreferenceString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue = L"");
    host::WString Get() const;
    /// Stores and saves; false, with the stored value as it was, when it cannot be saved.
    bool Set(std::wstring_view value);

private:
    const wchar_t* m_section;
    const wchar_t* m_key;
    const wchar_t* m_default;
};
