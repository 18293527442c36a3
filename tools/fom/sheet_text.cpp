#include "fom/sheet_text.h"

#include <cairo.h>

namespace command {
namespace {

bool IsContinuation(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

void DropCharacter(std::string& text) {
    while (!text.empty() && IsContinuation(text.back()))
        text.pop_back();
    if (!text.empty()) text.pop_back();
}

}  // namespace

double SheetText::WidthOf(const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(m_target, text.c_str(), &extents);
    return extents.x_advance;
}

void SheetText::Write(std::string text, const TextPlace& place, Ink ink, bool bold) {
    cairo_select_font_face(m_target, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(m_target, place.size);
    if (WidthOf(text) > place.width) {
        do
            DropCharacter(text);
        while (!text.empty() && WidthOf(text + "\u2026") > place.width);
        text += "\u2026";
    }
    const double gray = ink == Ink::Strong ? 0.08 : ink == Ink::Plain ? 0.25 : 0.48;
    cairo_set_source_rgb(m_target, gray, gray, gray);
    cairo_move_to(m_target, place.x, place.y);
    cairo_show_text(m_target, text.c_str());
}

}  // namespace command
