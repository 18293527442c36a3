#include "host/services/calls.h"

PreferenceString::PreferenceString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue)
    : m_section(section), m_key(key), m_default(defaultValue) {}

host::WString PreferenceString::Get() const {
    return host::Installed().preferences.Read(m_section, m_key).value_or(host::WString(m_default));
}

bool PreferenceString::Set(std::wstring_view value) {
    return host::Installed().preferences.Write(m_section, m_key, value);
}
