#include <algorithm>
#include <cstdint>
#include <iterator>

#include "host/base/hash.h"
#include "host/base/wstring.h"

#include "base/utf16.h"

namespace host {
namespace {

/// Every `step`-th character from `first` to `last` folds to the one `delta` further on.
struct FoldRange {
    char32_t first;
    char32_t last;
    unsigned step;
    std::int32_t delta;
};

constexpr FoldRange kFoldRanges[] = {
#include "base/case_fold_table.inc"
};

char32_t FoldBeyondAscii(char32_t c) noexcept {
    const auto* range = std::upper_bound(std::begin(kFoldRanges), std::end(kFoldRanges), c,
                                         [](char32_t value, const FoldRange& r) { return value < r.first; });
    if (range == std::begin(kFoldRanges)) return c;
    --range;
    if (c > range->last || (c - range->first) % range->step != 0) return c;
    return static_cast<char32_t>(static_cast<std::int32_t>(c) + range->delta);
}

constexpr char32_t FoldAscii(char32_t c) noexcept {
    return c - U'A' < 26u ? c | 0x20u : c;
}

template <class Unit>
int CompareFoldedReaders(detail::CharacterReader<Unit> a, detail::CharacterReader<Unit> b) noexcept {
    for (;;) {
        if (a.AtEnd() || b.AtEnd()) return static_cast<int>(b.AtEnd()) - static_cast<int>(a.AtEnd());
        const char32_t left = a.Next();
        const char32_t right = b.Next();
        if (left == right) continue;
        const char32_t foldedLeft = FoldCase(left);
        const char32_t foldedRight = FoldCase(right);
        if (foldedLeft != foldedRight) return foldedLeft < foldedRight ? -1 : 1;
    }
}

/// The units before the first 0.
detail::UnitReader ReadName(std::span<const char16_t> units) noexcept {
    const auto end = std::find(units.begin(), units.end(), u'\0');
    return detail::UnitReader(units.data(), static_cast<std::size_t>(end - units.begin()));
}

}  // namespace

char32_t FoldCase(char32_t c) noexcept {
    if (c < 0x80) return FoldAscii(c);
    return FoldBeyondAscii(c);
}

int CompareFolded(std::wstring_view a, std::wstring_view b, std::size_t maxUnits) noexcept {
    if (maxUnits != SIZE_MAX) {
        a = CutUtf16(a, maxUnits);
        b = CutUtf16(b, maxUnits);
    }
    return CompareFoldedReaders(detail::ReadWide(a), detail::ReadWide(b));
}

// Names are mostly equal units and plain letters: those are compared as they stand, and the rest, from the
// first place that needs the table, character by character. Up to there both have equal units or letters, so
// that a pair cannot begin in one and not in the other.
int CompareFolded(std::span<const char16_t> a, std::span<const char16_t> b) noexcept {
    std::size_t at = 0;
    for (const std::size_t end = std::min(a.size(), b.size()); at < end; ++at) {
        const char32_t left = a[at];
        const char32_t right = b[at];
        if (left == right) {
            if (left == 0) return 0;
            continue;
        }
        if ((left | right) >= 0x80) break;
        if (FoldAscii(left) != FoldAscii(right)) return FoldAscii(left) < FoldAscii(right) ? -1 : 1;
    }
    if (at != 0 && detail::IsHighSurrogate(a[at - 1])) --at;
    return CompareFoldedReaders(ReadName(a.subspan(at)), ReadName(b.subspan(at)));
}

// Plain units go four to a word, by their place; equal names have their pairs at equal places, since folding
// never changes how many units a character takes.
std::uint64_t HashFolded(std::span<const char16_t> units) noexcept {
    Hasher hasher;
    std::uint64_t word = 0;
    const std::size_t size = units.size();
    for (std::size_t i = 0; i < size && units[i] != 0; ++i) {
        char32_t unit = units[i];
        if (unit < 0x80) {
            unit = FoldAscii(unit);
        } else if (i + 1 < size && detail::IsHighSurrogate(unit) && detail::IsLowSurrogate(units[i + 1])) {
            const char32_t folded = FoldBeyondAscii(detail::JoinSurrogates(unit, units[++i]));
            hasher.Word(word);
            hasher.Word(folded);
            word = 0;
            continue;
        } else {
            unit = FoldBeyondAscii(unit);
        }
        word = (word << 16) | unit;
        if (i % 4 == 3) {
            hasher.Word(word);
            word = 0;
        }
    }
    hasher.Word(word);
    return hasher.Finish();
}

}  // namespace host
