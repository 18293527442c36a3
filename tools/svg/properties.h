#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "svg/omissions.h"
#include "svg/style.h"

namespace svg {

/// One property that the cascade knows. Properties without `apply` matter to how text or pixels look, not to
/// paints; they are known so that they can be carried along and are not taken for mistakes.
struct Property {
    std::string_view name;
    bool inherited = false;
    /// Whether an attribute of that name sets it.
    bool attribute = true;
    /// Sets the property in `style` from a value; false when the value is not valid.
    bool (*apply)(Style& style, const Style& parent, std::string_view value, Omissions& omissions) = nullptr;
    /// Takes the property over from another style.
    void (*copy)(Style& to, const Style& from) = nullptr;
};

/// Finds a property by name; null when unknown.
const Property* FindProperty(std::string_view name);

/// Gives `property` the value, with "inherit", "initial" and "unset" resolved. A value that is not valid
/// leaves the style as it was and is counted.
void ApplyProperty(const Property& property, std::string_view value, const Style& parent, Style& style,
                   Omissions& omissions);

}  // namespace svg
