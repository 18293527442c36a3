#include <type_traits>

#include "host/color/convert.h"

// The comparison and the hash read colours as bytes.
static_assert(std::is_trivially_copyable_v<CLR_COLORSPEC>);
static_assert(std::has_unique_object_representations_v<CLR_COLORSPEC>);

int WClrConvert::CompareUnequal(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) noexcept {
    constexpr std::size_t kWords = 8;
    std::uint16_t left[kWords];
    std::uint16_t right[kWords];
    std::memcpy(left, &a, sizeof left);
    std::memcpy(right, &b, sizeof right);
    for (std::size_t i = 0; i < kWords; ++i) {
        if (left[i] != right[i]) return left[i] < right[i] ? -1 : 1;
    }
    if (!a.IsNamedPalette()) return 0;
    const int order = std::memcmp(a.GetIdentity().data(), b.GetIdentity().data(), a.GetIdentity().size());
    return (order > 0) - (order < 0);
}
