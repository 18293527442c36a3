#include "host/gfx/wideline.h"

CGE_WIDELINE::~CGE_WIDELINE() = default;

int CGE_WIDELINE::Compare(const CGE_WIDELINE& other) const noexcept {
    if (this == &other) return 0;
    if (GetType() != other.GetType()) return GetType() < other.GetType() ? -1 : 1;
    return CompareSameType(other);
}
