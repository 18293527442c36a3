#pragma once

#include <cstring>

#include "host/gfx/fill.h"

/// The comparison of fills as the pools call it: what nearly every lookup meets, an equal uniform fill or
/// another kind, is decided in line.
namespace VyrFOM {

/// Records of one kind, by that kind's sub-record.
int CompareSameKind(const CGE_FILL& a, const CGE_FILL& b, bool skipColorBytes);
/// By length, then by bytes; an identifier of no entry has length 0.
int CompareTmpContents(unsigned a, unsigned b);
/// The images that two temporary-data entries hold, by their pixels; none sorts first.
int CompareTmpImages(unsigned a, unsigned b) noexcept;

/// RCF_CompareCGEFills.
inline int CompareFills(const CGE_FILL& a, const CGE_FILL& b, bool skipColorBytes) {
    if (&a == &b) return 0;
    if (a.GetType() != b.GetType()) return a.GetType() < b.GetType() ? -1 : 1;
    // Equal bytes are equal whatever takes part, and the sub-record has no padding.
    static_assert(sizeof(CGE_UNIFORMFILL) == sizeof(CLR_COLORSPEC) + sizeof(CLR_SCREENSPEC));
    if (a.GetType() == FillUniform && std::memcmp(&a.Uniform(), &b.Uniform(), sizeof(CGE_UNIFORMFILL)) == 0)
        return 0;
    return CompareSameKind(a, b, skipColorBytes);
}

}  // namespace VyrFOM
