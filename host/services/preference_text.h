#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "host/base/wstring.h"

namespace host {

/// A preferences file as text: "[section]" headers and "key=value" lines, UTF-8. Names compare without regard
/// to case and the first match wins. Whatever is neither a header nor a value is kept as it stands.
///
/// Escapes, in names and values: `\\`, `\n`, `\r`, `\t`, and `\xH;` for the character of hexadecimal number
/// H. They stand for what the syntax would lose: control characters, blanks at either end, and in names "=",
/// "[", "]", ";" and "#". An escape that is none of these reads as it stands.
///
/// Only the bytes are held; each call walks through the lines, so that no file costs more than its size.
class PreferenceText {
public:
    PreferenceText() = default;
    /// Empty when `bytes` cannot be a preferences file: not valid UTF-8, or a 0 in it.
    static std::optional<PreferenceText> Parse(std::string_view bytes);

    std::optional<std::wstring> Find(std::wstring_view section, std::wstring_view key) const;
    /// Replaces the value of the first match, or adds a line at the end of the section, or a section at the
    /// end.
    void Set(std::wstring_view section, std::wstring_view key, std::wstring_view value);
    const std::string& GetBytes() const noexcept { return m_bytes; }

private:
    /// Where a key's line is, or where it would go.
    struct Place {
        std::size_t begin = 0;  ///< of the line, or where to insert one
        std::size_t end = 0;    ///< of the line without its line end; `begin` when there is none
        bool hasSection = false;
    };

    Place FindPlace(std::wstring_view section, std::wstring_view key) const;
    /// What the lines of this file end with.
    std::string_view LineEnd() const noexcept;

    std::string m_bytes;
};

}  // namespace host
