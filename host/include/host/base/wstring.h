#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "host/base/export.h"

/// Wide strings. `wchar_t` carries UTF-16 units on every platform's interfaces: all limits and counts of this
/// library are in UTF-16 units, also where `wchar_t` is four bytes and one of them may count for two.
namespace host {

/// UTF-16 units that `text` takes. A wide character above U+10FFFF counts as U+FFFD everywhere.
FOM_API std::size_t Utf16Length(std::wstring_view text) noexcept;

/// The longest prefix of `text` that takes at most `maxUnits` UTF-16 units and ends between characters.
FOM_API std::wstring_view CutUtf16(std::wstring_view text, std::size_t maxUnits) noexcept;

/// Writes `text` as UTF-16 units into `out`, cut as CutUtf16 does, and clears the rest of `out`. Returns the
/// units written.
FOM_API std::size_t PackUtf16(std::wstring_view text, std::span<char16_t> out) noexcept;

/// The text of `units` up to the first 0 or the end. A lone surrogate becomes U+FFFD.
FOM_API std::wstring UnpackUtf16(std::span<const char16_t> units);

/// UTF-8 to and from wide text. What is not valid becomes U+FFFD, never an exception other than bad_alloc.
FOM_API std::string ToUtf8(std::wstring_view text);
FOM_API std::wstring FromUtf8(std::string_view text);

/// A path from wide text, whatever the locale or code page, and back.
FOM_API std::filesystem::path ToPath(std::wstring_view text);
FOM_API std::wstring FromPath(const std::filesystem::path& path);

/// Simple Unicode case folding of one character, independent of locale.
FOM_API char32_t FoldCase(char32_t c) noexcept;

/// Three-way comparison without regard to case (simple folding), by folded character, of at most `maxUnits`
/// UTF-16 units of each text, cut as CutUtf16 does. The one meaning of "case-insensitive" in this library.
FOM_API int CompareFolded(std::wstring_view a, std::wstring_view b, std::size_t maxUnits = SIZE_MAX) noexcept;

/// Three-way comparison by UTF-16 units: the same order on every platform.
FOM_API int CompareUnits(std::wstring_view a, std::wstring_view b) noexcept;

/// A name inside a record: at most N - 1 UTF-16 units and a terminating 0; the rest is kept 0.
template <std::size_t N>
class FixedName {
public:
    FixedName() = default;
    /// Cuts to N - 1 units, and at the first 0.
    void Set(std::wstring_view text) noexcept {
        PackUtf16(text.substr(0, text.find(L'\0')), std::span<char16_t>(m_units).first(N - 1));
        m_units[N - 1] = 0;
    }
    std::wstring Get() const { return UnpackUtf16(m_units); }
    bool IsEmpty() const noexcept { return m_units[0] == 0; }
    void Clear() noexcept { m_units.fill(0); }
    const std::array<char16_t, N>& Units() const noexcept { return m_units; }
    std::array<char16_t, N>& Units() noexcept { return m_units; }

private:
    std::array<char16_t, N> m_units{};
};

/// Three-way comparison without regard to case over the whole buffer, up to the first 0: the order of the
/// texts.
FOM_API int CompareFolded(std::span<const char16_t> a, std::span<const char16_t> b) noexcept;
/// Hash under which names equal to CompareFolded are equal.
FOM_API std::uint64_t HashFolded(std::span<const char16_t> units) noexcept;

}  // namespace host

namespace VyrPlatform {

/// The host's string: an owning, zero-terminated string value. Comparison with `Compare` and the operators is
/// case-sensitive, by UTF-16 unit.
template <class Ch>
class VyrStringT {
public:
    using View = std::basic_string_view<Ch>;

    VyrStringT() = default;
    VyrStringT(const Ch* text) : m_text(text ? View(text) : View()) {}
    VyrStringT(View text) : m_text(text) {}
    VyrStringT(std::basic_string<Ch> text) noexcept : m_text(std::move(text)) {}

    const Ch* c_str() const noexcept { return m_text.c_str(); }
    View view() const noexcept { return m_text; }
    operator View() const noexcept { return m_text; }
    const std::basic_string<Ch>& str() const noexcept { return m_text; }
    std::size_t size() const noexcept { return m_text.size(); }
    bool empty() const noexcept { return m_text.empty(); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void clear() noexcept { m_text.clear(); }

    VyrStringT& operator+=(View text) {
        m_text += text;
        return *this;
    }
    friend VyrStringT operator+(VyrStringT a, View b) { return a += b; }

    /// Negative, 0 or positive.
    int Compare(const VyrStringT& other) const noexcept {
        if constexpr (std::is_same_v<Ch, wchar_t>)
            return host::CompareUnits(m_text, other.m_text);
        else
            return m_text.compare(other.m_text);
    }
    int CompareNoCase(const VyrStringT& other) const noexcept requires std::is_same_v<Ch, wchar_t> {
        return host::CompareFolded(View(m_text), View(other.m_text));
    }

    friend bool operator==(const VyrStringT& a, const VyrStringT& b) noexcept {
        return a.m_text == b.m_text || a.Compare(b) == 0;
    }
    friend std::strong_ordering operator<=>(const VyrStringT& a, const VyrStringT& b) noexcept {
        return a.Compare(b) <=> 0;
    }

private:
    std::basic_string<Ch> m_text;
};

}  // namespace VyrPlatform
