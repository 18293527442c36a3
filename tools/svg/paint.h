#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "svg/color.h"
#include "svg/matrix.h"
#include "svg/viewport.h"

namespace svg {

/// What the coordinates of a paint relate to: the box of the shape, each side 1, or the shape's own user
/// space.
enum class Units : unsigned char { ObjectBoundingBox, UserSpaceOnUse };

enum class Spread : unsigned char { Pad, Reflect, Repeat };

struct Stop {
    /// From 0 to 1, never below the stop before.
    double offset = 0;
    /// Alpha is that of the colour times the stop's opacity.
    Color color;
};

/// A gradient with at least two stops and a vector or radius that is not zero. What it inherits by reference
/// is in it.
struct Gradient {
    enum class Kind : unsigned char { Linear, Radial };

    Kind kind = Kind::Linear;
    Units units = Units::ObjectBoundingBox;
    Spread spread = Spread::Pad;
    Matrix transform;
    /// Of a linear gradient.
    double x1 = 0, y1 = 0, x2 = 1, y2 = 0;
    /// Of a radial gradient: circle, focus and its radius.
    double cx = 0.5, cy = 0.5, r = 0.5, fx = 0.5, fy = 0.5, fr = 0;
    /// Shared by the gradients that inherit them.
    std::shared_ptr<const std::vector<Stop>> stops;
    std::string id;
};

/// A raster image in a pattern, with its place in the pattern's content.
struct PatternImage {
    /// "image/png" or "image/jpeg", as the bytes themselves say.
    std::string mediaType;
    std::string bytes;
    double x = 0, y = 0;
    /// Nothing: the image's own size.
    std::optional<double> width, height;
    /// As written; empty for the default.
    std::string preserveAspectRatio;
    Matrix transform;
    double opacity = 1;
};

/// What a pattern paints. Shared by the patterns that inherit it.
struct PatternContent {
    /// The content and all that it refers to as canonical SVG text: equal content gives equal bytes, whatever
    /// its ids, prefixes and attribute order were.
    std::string bytes;
    /// How many steps of filters it takes to draw the bytes, repetitions included.
    double filterSteps = 0;
    /// Set when the content is exactly one embedded raster image.
    std::optional<PatternImage> image;
};

/// A pattern with content and a size that is not zero. What it inherits by reference is in it.
struct Pattern {
    Units units = Units::ObjectBoundingBox;
    Units contentUnits = Units::UserSpaceOnUse;
    Matrix transform;
    double x = 0, y = 0, width = 0, height = 0;
    std::optional<ViewBox> viewBox;
    /// As written; empty for the default.
    std::string preserveAspectRatio;
    std::shared_ptr<const PatternContent> content;
    std::string id;
};

/// The paint of a shape. Gradients and patterns belong to the document: one object for each definition.
struct Paint {
    enum class Kind : unsigned char { None, Solid, Gradient, Pattern };

    Kind kind = Kind::None;
    /// Of Kind::Solid.
    Color color{};
    const svg::Gradient* gradient = nullptr;
    const svg::Pattern* pattern = nullptr;
};

}  // namespace svg
