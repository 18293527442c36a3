#include <cstring>

#include "fom/fill_compare.h"

#include "fill/byte_order.h"

using VyrFOM::CompareBytes;
using VyrFOM::CompareValues;

namespace {

/// The wrapped difference as the signed number that has its bits.
int Difference(std::uint32_t a, std::uint32_t b) noexcept {
    return static_cast<std::int32_t>(a - b);
}

}  // namespace

int RCF_CompareTiles(const CGE_TILING* a, const CGE_TILING* b) noexcept {
    // The fields follow one another without a gap, so the first byte that differs lies in the first field
    // that does.
    static_assert(sizeof(CGE_TILING) == 2 * sizeof(std::int32_t) + 4 * sizeof(std::uint16_t));
    return CompareBytes(*a, *b);
}

int RCF_CompareScreenSpecNoOverprint(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept {
    if (const int order = CompareBytes(a.screenId, b.screenId); order != 0) return order;
    if (const int order = CompareBytes(a.angle, b.angle); order != 0) return order;
    return CompareBytes(a.frequency, b.frequency);
}

int RCF_CompareScreenSpecOverprint(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept {
    return RCF_CompareScreenSpecNoOverprint(a, b);
}

int RCF_CompareScreenSpec(const CLR_SCREENSPEC& a, const CLR_SCREENSPEC& b) noexcept {
    if (const int order = RCF_CompareScreenSpecNoOverprint(a, b); order != 0) return order;
    return Difference(a.overprint, b.overprint);
}

int RCF_CompareTextureInfo(const CGE_TXRINFO* a, const CGE_TXRINFO* b) noexcept {
    if (const int order = CompareValues(a->present != 0, b->present != 0); order != 0) return order;
    if (const int order = CompareBytes(a->resolution, b->resolution); order != 0) return order;
    if (const int order = CompareBytes(a->maxEdge, b->maxEdge); order != 0) return order;
    if (const int order = host::CompareFolded(a->library.Units(), b->library.Units()); order != 0)
        return order;
    if (const int order = host::CompareFolded(a->texture.Units(), b->texture.Units()); order != 0)
        return order;
    if (const int order = host::CompareFolded(a->style.Units(), b->style.Units()); order != 0) return order;
    return CompareBytes(a->parameters, b->parameters);
}

int RCF_CompareBitmaps(HMEM a, HMEM b) noexcept {
    if (a == b) return 0;
    const std::size_t size = MEMMANGetSize(a);
    if (const int order = CompareValues(size, MEMMANGetSize(b)); order != 0) return order;
    const void* first = MEMMANLock(a);
    const void* second = MEMMANLock(b);
    int order = -1;
    if (first && second)
        order = std::memcmp(first, second, size);
    else if (first)
        order = 1;  // no block against an empty one: still an order
    if (first) MEMMANUnlock(a);
    if (second) MEMMANUnlock(b);
    return order;
}
