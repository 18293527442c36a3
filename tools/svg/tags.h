#pragma once

#include <string_view>

namespace svg {

/// What an element is to the reader.
enum class Tag : unsigned char {
    Unknown,
    // containers that are drawn
    Group,
    Anchor,
    Svg,
    Switch,
    Use,
    // shapes
    Path,
    Rect,
    Circle,
    Ellipse,
    Line,
    Polyline,
    Polygon,
    Text,
    TextSpan,
    // drawn, but not as a shape
    Image,
    ForeignObject,
    FlowedText,
    // definitions that paint
    LinearGradient,
    RadialGradient,
    Pattern,
    // other content that is not drawn where it stands
    Stop,
    Symbol,
    Definitions,
    ClipPath,
    Mask,
    Marker,
    Filter,
    Font,
    StyleSheet,
    Script,
    Animation,
    Metadata,
};

/// The tag of a local element name.
Tag FindTag(std::string_view localName);

constexpr bool IsPaintServer(Tag tag) {
    return tag >= Tag::LinearGradient && tag <= Tag::Pattern;
}

/// Whether elements of that kind are drawn where they stand, whatever becomes of them in this reader.
constexpr bool IsDrawn(Tag tag) {
    return tag >= Tag::Group && tag <= Tag::FlowedText;
}

constexpr bool IsShape(Tag tag) {
    return tag >= Tag::Path && tag <= Tag::TextSpan;
}

constexpr bool IsTextContent(Tag tag) {
    return tag == Tag::Text || tag == Tag::TextSpan;
}

/// Whether markers stand at the vertices of shapes of that kind.
constexpr bool CanHaveMarkers(Tag tag) {
    return tag == Tag::Path || tag == Tag::Line || tag == Tag::Polyline || tag == Tag::Polygon;
}

}  // namespace svg
