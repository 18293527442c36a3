#include "host/profile/profile_file.h"

#include <optional>

#include "host/base/atomic_file.h"

#include "profile/profile_text.h"

namespace host {
namespace {

std::optional<std::wstring_view> FindValue(std::wstring_view text, std::wstring_view section,
                                           std::wstring_view key) noexcept {
    ProfileParser parser(text);
    bool inside = false;
    while (const std::optional<ProfileLine> line = parser.Next()) {
        if (line->kind == ProfileLine::Kind::Section) {
            // Another section of the same name does not continue the first.
            if (inside) return std::nullopt;
            inside = CompareFolded(line->name, section) == 0;
        } else if (inside && line->kind == ProfileLine::Kind::Entry && CompareFolded(line->name, key) == 0) {
            return UnquoteProfile(line->value);
        }
    }
    return std::nullopt;
}

}  // namespace

VyrPlatform::VyrStringT<wchar_t> ReadProfileString(std::wstring_view path, std::wstring_view section,
                                                   std::wstring_view key, std::wstring_view fallback) {
    Error error;
    const std::optional<std::vector<std::byte>> bytes = ReadWholeFile(ToPath(path), error);
    if (!bytes) return fallback;
    const std::wstring text = DecodeProfile(*bytes);
    return FindValue(text, TrimProfile(section), TrimProfile(key)).value_or(fallback);
}

}  // namespace host
