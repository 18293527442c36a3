#include "host/color/screenspec.h"

#include <cstring>

namespace {

template <class T>
int CompareBytes(const T& a, const T& b) noexcept {
    return std::memcmp(&a, &b, sizeof(T));
}

}  // namespace

int CLR_SCREENSPEC::CompareTo(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b, bool withOverprint) noexcept {
    if (const int order = CompareBytes(a.screenId, b.screenId); order != 0) return order;
    if (const int order = CompareBytes(a.angle, b.angle); order != 0) return order;
    if (const int order = CompareBytes(a.frequency, b.frequency); order != 0) return order;
    return withOverprint ? CompareBytes(a.overprint, b.overprint) : 0;
}
