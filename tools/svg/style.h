#pragma once

#include <string_view>

#include "svg/color.h"
#include "svg/length.h"

namespace svg {

/// A fill or stroke as computed, before its reference is looked up.
struct PaintValue {
    /// ContextStroke is what strokes the line that a marker stands on, and nothing elsewhere.
    enum class Kind : unsigned char { None, Color, CurrentColor, Reference, ContextStroke };

    Kind kind = Kind::None;
    /// What stands in for a reference that leads nowhere; never Reference.
    Kind fallback = Kind::None;
    /// The colour of Kind::Color, here or as the fallback.
    Color color{};
    /// What stands in url(): "#id", or something outside the document.
    std::string_view reference{};
};

/// A stop's colour: a colour, or the element's own "color".
struct StopColor {
    Color color{};
    bool current = false;
};

enum class FillRule : unsigned char { NonZero, EvenOdd };
enum class LineCap : unsigned char { Butt, Round, Square };
enum class LineJoin : unsigned char { Miter, Round, Bevel };

/// Properties that an element takes from its parent when it says nothing.
struct InheritedStyle {
    PaintValue fill{.kind = PaintValue::Kind::Color};
    PaintValue stroke;
    Color color{};
    double fontSize = 16;
    double fillOpacity = 1;
    double strokeOpacity = 1;
    double miterLimit = 4;
    Length strokeWidth{.value = 1};
    Length dashOffset;
    /// As written; empty for "none".
    std::string_view dashArray;
    /// What stands in url(); empty for "none".
    std::string_view markerStart, markerMid, markerEnd;
    FillRule fillRule = FillRule::NonZero;
    LineCap lineCap = LineCap::Butt;
    LineJoin lineJoin = LineJoin::Miter;
    /// The stroke lies below the fill ("paint-order").
    bool strokeFirst = false;
    bool visible = true;
};

/// Properties that start anew at every element.
struct OwnStyle {
    double opacity = 1;
    double stopOpacity = 1;
    StopColor stopColor;
    /// As written; empty for "none".
    std::string_view clipPath, mask, filter, blendMode;
    bool displayed = true;
    /// The width of strokes is that of the screen ("vector-effect").
    bool nonScalingStroke = false;
    bool overflowVisible = false;
};

/// The computed style of one element. Views point into the document.
struct Style : InheritedStyle, OwnStyle {};

}  // namespace svg
