#pragma once

#include "host/xml/xml_node.h"

#include "svg/omissions.h"
#include "svg/path_steps.h"
#include "svg/style.h"
#include "svg/tags.h"
#include "svg/viewport.h"

namespace svg {

/// Whether elements of that kind have an outline: all shapes but text.
constexpr bool HasOutline(Tag tag) {
    return tag >= Tag::Path && tag <= Tag::Polygon;
}

/// Adds the outline of a shape; nothing when it has no size. `data` is the "d" or "points" attribute. Counts
/// what is invalid; where path data or points are malformed, what stands before the mistake is added.
void AddShape(Tag tag, host::XmlNode node, host::XmlAttribute data, const Style& style,
              const Viewport& viewport, Omissions& omissions, PathSteps& steps);

}  // namespace svg
