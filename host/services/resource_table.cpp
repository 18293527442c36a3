#include "services/resource_table.h"

#include <array>

namespace host {
namespace {

struct TextEntry {
    std::wstring_view identifier;
    std::wstring_view text;
};

constexpr std::array<TextEntry, 6> kTexts{{
    {L"42be80d4-7a8b-4900-a9ac-f0f9d03e19d8", L"Outline"},
    {L"66bb28e9-5385-4a7e-973b-cb1770b213e5", L"None"},
    {L"68e85978-e7a4-4622-acf6-80abcef3b60a", L"Hatch line"},
    {L"a8b65dbc-4fca-4826-a358-e8d57a0fa8c6", L"Hairline"},
    {L"b6564889-3fc1-4fd7-a176-6a9385ca607e",
     L"The texture libraries could not be found. Texture fills are not available until they are installed."},
    {L"c13c0002-3c13-48ad-8bfb-3b79179eaded", L"Fill"},
}};

}  // namespace

WString ResourceTable::GetString(std::wstring_view identifier) const {
    for (const TextEntry& entry : kTexts)
        if (CompareFolded(identifier, entry.identifier) == 0) return WString(entry.text);
    return WString();
}

}  // namespace host
