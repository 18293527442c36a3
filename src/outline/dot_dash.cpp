#include "fom/dot_dash.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace {

/// How many of the elements that count stand before the first negative one.
std::size_t CountUsable(const CGE_DOTDASHSPEC& pattern) noexcept {
    const auto begin = pattern.element.begin();
    const auto negative =
        std::find_if(begin, begin + pattern.Used(), [](std::int32_t length) { return length < 0; });
    return static_cast<std::size_t>(negative - begin);
}

/// As the bytes of little-endian numbers: the lowest byte that differs decides.
int CompareStoredBytes(std::int32_t a, std::int32_t b) noexcept {
    const std::uint32_t difference = static_cast<std::uint32_t>(a ^ b);
    if (difference == 0) return 0;
    const int shift = std::countr_zero(difference) & ~7;
    const auto byte = [shift](std::int32_t value) {
        return (static_cast<std::uint32_t>(value) >> shift) & 0xFF;
    };
    return byte(a) < byte(b) ? -1 : 1;
}

}  // namespace

bool OUTIsValidDotDash(const CGE_DOTDASHSPEC& pattern) noexcept {
    const std::size_t usable = CountUsable(pattern);
    return usable == pattern.count && usable % 2 == 0 && CGEDotDashDotCount(pattern) > 0;
}

bool OUTFixDotDash(CGE_DOTDASHSPEC& pattern) noexcept {
    const std::size_t usable = CountUsable(pattern) & ~std::size_t{1};
    if (usable != 0) {
        pattern.count = static_cast<std::uint16_t>(usable);
        return true;
    }
    pattern.count = 2;
    pattern.element[0] = pattern.element[1] = 1;
    return false;
}

int OUTCompareDotDash(const CGE_DOTDASHSPEC* a, const CGE_DOTDASHSPEC* b) noexcept {
    if (!a || !b) return (a != nullptr) - (b != nullptr);
    if (a->count != b->count) return a->count < b->count ? -1 : 1;
    const auto end = a->element.begin() + a->Used();
    const auto [inA, inB] = std::mismatch(a->element.begin(), end, b->element.begin());
    return inA == end ? 0 : CompareStoredBytes(*inA, *inB);
}
