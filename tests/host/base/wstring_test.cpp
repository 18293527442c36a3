#include "host/base/wstring.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using VyrPlatform::VyrStringT;

// One character outside the first plane: two units, one or two wide characters.
const std::wstring kSmile = L"\U0001F600";

std::vector<char16_t> Pack(std::wstring_view text, std::size_t size) {
    std::vector<char16_t> units(size, u'x');
    EXPECT_LE(host::PackUtf16(text, units), size);
    return units;
}

TEST(Utf16, CountsAndCutsBetweenCharacters) {
    const std::wstring text = L"ab" + kSmile + L"c";
    EXPECT_EQ(host::Utf16Length(text), 5u);
    EXPECT_EQ(host::CutUtf16(text, 2), L"ab");
    EXPECT_EQ(host::CutUtf16(text, 3), L"ab");
    EXPECT_EQ(host::CutUtf16(text, 4), L"ab" + kSmile);
    EXPECT_EQ(host::CutUtf16(text, 99), text);
    EXPECT_EQ(host::CutUtf16(text, 0), L"");
}

TEST(Utf16, PacksCutAndCleared) {
    EXPECT_EQ(Pack(L"ab" + kSmile, 6), (std::vector<char16_t>{u'a', u'b', 0xD83D, 0xDE00, 0, 0}));
    EXPECT_EQ(Pack(L"ab" + kSmile, 3), (std::vector<char16_t>{u'a', u'b', 0}));
    EXPECT_EQ(host::UnpackUtf16(Pack(L"ab" + kSmile, 6)), L"ab" + kSmile);
    const char16_t lone[] = {u'a', 0xDE00, 0xD83D, u'b', 0, u'c'};
    EXPECT_EQ(host::UnpackUtf16(lone),
              L"a\xFFFD\xFFFD"
              L"b");
}

TEST(Utf16, FixedNameKeepsItsLastUnitZero) {
    host::FixedName<4> name;
    name.Units().fill(u'x');
    name.Set(L"abcdef");
    EXPECT_EQ(name.Units(), (std::array<char16_t, 4>{u'a', u'b', u'c', 0}));
    name.Set(std::wstring_view(L"a\0b", 3));
    EXPECT_EQ(name.Units(), (std::array<char16_t, 4>{u'a', 0, 0, 0}));
    EXPECT_FALSE(name.IsEmpty());
    name.Clear();
    EXPECT_TRUE(name.IsEmpty());
}

TEST(Utf8, RoundTripsAndReplacesWhatIsBroken) {
    const std::wstring text = L"a\u00E9\u20AC" + kSmile + L"\U0010FFFF";
    EXPECT_EQ(host::ToUtf8(text), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF");
    EXPECT_EQ(host::FromUtf8(host::ToUtf8(text)), text);
    EXPECT_EQ(host::ToUtf8(std::wstring{static_cast<wchar_t>(0xD800), L'a'}),
              "\xEF\xBF\xBD"
              "a");
    const std::pair<const char*, const wchar_t*> broken[] = {
        {"\xC0\xAF", L"\xFFFD\xFFFD"},                      // overlong
        {"\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},            // surrogate
        {"\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},  // above the last character
        {"\xE2\x82z", L"\xFFFDz"},                          // cut off by another character
        {"\xF0\x9F\x98", L"\xFFFD"},                        // cut off by the end
        {"\x80\xFFz", L"\xFFFD\xFFFDz"},
    };
    for (const auto& [bytes, wide] : broken)
        EXPECT_EQ(host::FromUtf8(bytes), wide);
    EXPECT_EQ(host::FromPath(host::ToPath(L"\u20AC/" + kSmile)), L"\u20AC/" + kSmile);
}

TEST(Folding, FollowsTheUnicodeData) {
    const std::pair<char32_t, char32_t> folds[] = {
        {U'@', U'@'},        {U'A', U'a'},       {U'Z', U'z'},       {U'[', U'['},     {0xC9, 0xE9},
        {0xD7, 0xD7},        {0x130, 0x130},     {0x178, 0xFF},      {0x17F, U's'},    {0x3A3, 0x3C3},
        {0x3C2, 0x3C3},      {0x1E9E, 0xDF},     {0xDF, 0xDF},       {0x13A0, 0x13A0}, {0x13F8, 0x13F0},
        {0xAB70, 0x13A0},    {0x10400, 0x10428}, {0x1E921, 0x1E943}, {0x101, 0x101},   {0x100, 0x101},
        {0x10FFFF, 0x10FFFF}};
    for (const auto& [from, to] : folds)
        EXPECT_EQ(host::FoldCase(from), to) << std::hex << static_cast<unsigned>(from);
    for (char32_t c = 0; c <= 0x10FFFF; ++c)
        ASSERT_EQ(host::FoldCase(host::FoldCase(c)), host::FoldCase(c));
}

TEST(Folding, ComparesTexts) {
    EXPECT_EQ(host::CompareFolded(L"\u00C9COLE \U00010400", L"\u00E9cole \U00010428"), 0);
    EXPECT_LT(host::CompareFolded(L"Ab", L"aBc"), 0);
    EXPECT_GT(host::CompareFolded(L"b", L"A"), 0);
    EXPECT_LT(host::CompareFolded(L"_", L"A"), 0);  // as the lower case letter, not as the upper case one
    EXPECT_EQ(host::CompareFolded(L"ABCx", L"abcy", 3), 0);
    EXPECT_LT(host::CompareFolded(L"ABCx", L"abcy", 4), 0);
    EXPECT_EQ(host::CompareFolded(L"a" + kSmile, L"A\U0001F601", 2), 0);
}

TEST(Folding, ComparesAndHashesBuffersUpToTheFirstZero) {
    const auto a = Pack(L"Stra\u00DFe\u03A3", 12);
    auto b = Pack(L"sTRA\u1E9EE\u03C2", 12);
    b[10] = u'?';
    EXPECT_EQ(host::CompareFolded(std::span(a), std::span(b)), 0);
    EXPECT_EQ(host::HashFolded(a), host::HashFolded(b));
    EXPECT_EQ(host::CompareFolded(std::span(a).first(7), std::span(b)), 0);
    b[4] = u's';
    EXPECT_GT(host::CompareFolded(std::span(a), std::span(b)), 0);
    EXPECT_NE(host::HashFolded(a), host::HashFolded(b));
}

TEST(Folding, BothFormsOrderAlike) {
    const std::wstring pieces[] = {L"a",
                                   L"A",
                                   L"_",
                                   L"\u00C9",
                                   L"\u00E9",
                                   L"\u017F",
                                   L"s",
                                   L"S",
                                   L"\uFF21",
                                   kSmile,
                                   L"\U00010400",
                                   L"\U00010428",
                                   std::wstring(1, static_cast<wchar_t>(0xD83D)),
                                   L""};
    std::vector<std::wstring> texts;
    for (const auto& first : pieces)
        for (const auto& second : pieces)
            texts.push_back(first + second);
    for (const auto& a : texts)
        for (const auto& b : texts) {
            const auto left = Pack(a, 5), right = Pack(b, 4);
            const int order = host::CompareFolded(std::span(left), std::span(right));
            ASSERT_EQ(order, host::CompareFolded(a, b));
            ASSERT_EQ(-order, host::CompareFolded(std::span(right), std::span(left)));
            ASSERT_TRUE(order != 0 || host::HashFolded(left) == host::HashFolded(right));
        }
}

TEST(VyrString, OrdersByUnits) {
    const VyrStringT<wchar_t> high(L"\uFF00"), pair(kSmile);
    EXPECT_LT(pair, high);  // by its first half, although the character is the greater one
    EXPECT_LT(VyrStringT<wchar_t>(L"B"), VyrStringT<wchar_t>(L"a"));
    EXPECT_LT(VyrStringT<wchar_t>(L"a"), VyrStringT<wchar_t>(L"ab"));
    EXPECT_EQ(VyrStringT<wchar_t>(L"AB").CompareNoCase(L"ab"), 0);
    const std::wstring halves{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(VyrStringT<wchar_t>(halves), pair);
    EXPECT_TRUE(VyrStringT<wchar_t>(static_cast<const wchar_t*>(nullptr)).IsEmpty());
}

}  // namespace
