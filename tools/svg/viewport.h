#pragma once

#include <optional>
#include <string_view>

#include "host/xml/xml_node.h"

#include "svg/matrix.h"

namespace svg {

struct ViewBox {
    double x = 0, y = 0, width = 0, height = 0;

    bool operator==(const ViewBox&) const = default;
};

/// What percentages of lengths relate to, in user units.
struct Viewport {
    double width = 0, height = 0;

    /// For lengths that lie along neither axis.
    double Diagonal() const;
};

/// Reads a viewBox; nothing when it is malformed or has a negative size.
std::optional<ViewBox> ParseViewBox(std::string_view text);

/// Places a view box in a rectangle at the origin, as preserveAspectRatio says (empty: centred, whole).
Matrix FitViewBox(const ViewBox& box, double width, double height, std::string_view aspect);

/// The size that the contents of the outermost svg element relate to.
Viewport RootViewport(host::XmlNode root);

}  // namespace svg
