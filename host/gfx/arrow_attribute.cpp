#include "host/gfx/arrow_attribute.h"

#include "gfx/outline_fields.h"

int CGE_ARROWATTRIB::CompareTo(const CGE_ARROWATTRIB& a, const CGE_ARROWATTRIB& b) noexcept {
    return host::detail::FieldCompare{}(a, b);
}
