#pragma once

#include <string>
#include <string_view>

namespace host {

/// Escapes of the preferences file; see PreferenceText. Any wide text comes back as it was, also one that is
/// not valid Unicode.
std::string EscapePreferenceName(std::wstring_view text);
std::string EscapePreferenceValue(std::wstring_view text);
std::wstring UnescapePreference(std::string_view text);

}  // namespace host
