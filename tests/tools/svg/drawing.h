#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "svg/document.h"

/// What a drawing's shapes came to, kept beyond the visit.
struct Drawing {
    struct Item {
        svg::Shape shape;
        std::optional<svg::Rect> bounds;
        double strokeWidth = 0;
    };

    /// Loads the content of an svg element.
    explicit Drawing(std::string_view content) {
        const std::string text =
            "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
            "viewBox='0 0 200 100'>\n" +
            std::string(content) + "</svg>";
        good =
            document.LoadText(text, "drawing.svg") && document.ForEachShape([this](const svg::Shape& shape) {
                items.push_back({shape, shape.Bounds(unbounded), shape.style->strokeWidth.value});
            });
    }

    const svg::Shape& operator[](std::size_t i) const { return items.at(i).shape; }
    std::size_t Omitted(std::string_view name) const { return document.GetOmissions().Of(name); }
    const std::string& Reason() const { return document.GetError().reason; }

    /// "none", "#rrggbb", "gradient" or "pattern".
    static std::string Name(const svg::Paint& paint) {
        if (paint.kind == svg::Paint::Kind::None) return "none";
        if (paint.kind != svg::Paint::Kind::Solid) return paint.gradient != nullptr ? "gradient" : "pattern";
        char text[8];
        std::snprintf(text, sizeof text, "#%02x%02x%02x", paint.color.r, paint.color.g, paint.color.b);
        return text;
    }
    std::string Fill(std::size_t i) const { return Name(items.at(i).shape.fill); }
    std::string StrokePaint(std::size_t i) const { return Name(items.at(i).shape.stroke.paint); }

    svg::Document document;
    std::vector<Item> items;
    svg::Omissions unbounded;
    bool good = false;
};
