#pragma once

#include <string>

#include "fom/cairo_pointers.h"

namespace command {

enum class Ink : unsigned char { Strong, Plain, Faint };

/// Where and how a line of text stands: its baseline's start and its size in pixels, cut where it would be
/// wider than `width`.
struct TextPlace {
    double x = 0, y = 0;
    double size = 0;
    double width = 0;
};

/// Writes on sheets. The target outlives it.
class SheetText {
public:
    explicit SheetText(CairoContext& target) : m_target(&target) {}

    /// Cuts whole characters and shows that it did.
    void Write(std::string text, const TextPlace& place, Ink ink, bool bold = false);
    /// In pixels, written as the last text was.
    double WidthOf(const std::string& text);

private:
    CairoContext* m_target;
};

}  // namespace command
