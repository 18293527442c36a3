#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace host {

/// The wide text of a profile file's bytes: UTF-16 of either byte order and UTF-8 by their byte-order marks,
/// else UTF-8 where the bytes are valid, else Latin-1.
std::wstring DecodeProfile(std::span<const std::byte> bytes);

/// Rules of the profile syntax on decoded text.

/// Without the blanks (all characters up to U+0020) at both ends.
std::wstring_view TrimProfile(std::wstring_view text) noexcept;
/// Without one pair of equal quotes, single or double, that encloses all of it.
std::wstring_view UnquoteProfile(std::wstring_view value) noexcept;

/// One line of a profile.
struct ProfileLine {
    enum class Kind { Other, Section, Entry };
    Kind kind = Kind::Other;
    std::wstring_view name;   ///< of the section or the key, trimmed
    std::wstring_view value;  ///< of an entry, trimmed, its quotes still on
};

/// Walks through the lines of a profile. Lines end with CR, LF or both. "[name]" begins a section: the name
/// runs to the last bracket, and what follows that does not count. A line that begins with ";", has no "=",
/// or opens a bracket without closing it is of no kind.
class ProfileParser {
public:
    /// `text` must outlive the parser and its lines.
    explicit ProfileParser(std::wstring_view text) noexcept : m_rest(text) {}
    /// The next line that is not blank; empty after the last.
    std::optional<ProfileLine> Next() noexcept;

private:
    std::wstring_view m_rest;
};

}  // namespace host
