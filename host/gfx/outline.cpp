#include "host/gfx/outline.h"

#include "gfx/outline_fields.h"

void CGE_OUTLINE::SetToNoOutline() noexcept {
    const VyrUtils::Guid kept = guid;
    *this = CGE_OUTLINE();
    guid = kept;
}

int CGE_OUTLINE::CompareTo(const CGE_OUTLINE& a, const CGE_OUTLINE& b, bool skipColorBytes) noexcept {
    return &a == &b ? 0 : host::detail::FieldCompare{skipColorBytes}(a, b);
}

void CGE_OUTLINE::HashInto(host::Hasher& hasher) const noexcept {
    host::detail::FieldHash hash(hasher);
    hash(*this);
}
