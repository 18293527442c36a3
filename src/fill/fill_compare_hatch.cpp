#include "host/color/convert.h"

#include "fom/fill_compare.h"

#include "fill/byte_order.h"

using VyrFOM::CompareBytes;
using VyrFOM::CompareValues;

int FILLCompareHatchColors(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) noexcept {
    const int first = static_cast<int>(a.GetModel());
    const int second = static_cast<int>(b.GetModel());
    return first != 0 && second != 0 ? WClrConvert::CompareColors(a, b) : first - second;
}

int FILLCompareHatchLine(const CGE_HATCHLINE* a, const CGE_HATCHLINE* b) noexcept {
    if (const int order = CompareBytes(a->origin, b->origin); order != 0) return order;
    if (const int order = CompareBytes(a->offset, b->offset); order != 0) return order;
    if (const int order = CompareBytes(a->spacing, b->spacing); order != 0) return order;
    if (const int order = CompareBytes(a->angle, b->angle); order != 0) return order;
    return CGE_OUTLINE::CompareTo(a->pen, b->pen, false);
}

int FILLCompareHatchFills(const CGE_HATCHFILL* a, const CGE_HATCHFILL* b) noexcept {
    if (const int order = FILLCompareHatchColors(a->background, b->background); order != 0) return order;
    if (const int order = RCF_CompareScreenSpec(a->screen, b->screen); order != 0) return order;
    if (const int order = CompareBytes(a->modification, b->modification); order != 0) return order;
    if (const int order = CompareBytes(a->spacingMultiplier, b->spacingMultiplier); order != 0) return order;
    if (const int order = CompareBytes(a->thicknessMultiplier, b->thicknessMultiplier); order != 0)
        return order;
    if (const int order = host::CompareFolded(a->library.Units(), b->library.Units()); order != 0)
        return order;
    if (const int order = host::CompareFolded(a->name.Units(), b->name.Units()); order != 0) return order;
    if (const int order = CompareValues(a->lines.size(), b->lines.size()); order != 0) return order;
    for (std::size_t i = 0; i < a->lines.size(); ++i)
        if (const int order = FILLCompareHatchLine(&a->lines[i], &b->lines[i]); order != 0) return order;
    return 0;
}
