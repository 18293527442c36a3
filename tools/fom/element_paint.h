#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// What one element is painted with: declarations of properties, and the definitions that they refer to, by
/// their numbers in SvgDefinitions.
struct ElementPaint {
    std::string declarations;
    std::vector<std::size_t> definitions;

    /// Nothing in the drawing may contradict the declaration.
    void Declare(std::string_view property, std::string_view value) {
        declarations.append(property).append(":").append(value).append("!important;");
    }

    bool operator==(const ElementPaint&) const = default;
};

}  // namespace command
