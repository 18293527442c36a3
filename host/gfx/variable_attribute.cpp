#include "host/gfx/variable_attribute.h"

#include "gfx/outline_fields.h"

void CGE_VARIABLEATTRIB::Scale(double factor) noexcept {
    for (CGE_VARIABLEPOINT& point : points) {
        point.left *= factor;
        point.right *= factor;
    }
}

int CGE_VARIABLEATTRIB::CompareTo(const CGE_VARIABLEATTRIB& a, const CGE_VARIABLEATTRIB& b) noexcept {
    return host::detail::FieldCompare{}(a, b);
}
