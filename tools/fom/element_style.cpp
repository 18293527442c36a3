#include "fom/element_style.h"

#include <algorithm>

#include "svg/declarations.h"

namespace command {
namespace {

bool InsistsOnPaint(std::string_view style) {
    if (style.find('!') == std::string_view::npos) return false;
    svg::DeclarationReader reader(style);
    while (const auto declaration = reader.Next()) {
        const std::string_view name = declaration->name;
        if (declaration->important &&
            (name.starts_with("fill") || name.starts_with("stroke") || name.starts_with("marker")))
            return true;
    }
    return false;
}

/// Whether what follows the style could be taken for a part of a comment, text or block in it.
bool MayBeOpen(std::string_view style) {
    return style.find_first_of("\"'\\{[") != std::string_view::npos ||
           style.find("/*") != std::string_view::npos ||
           std::count(style.begin(), style.end(), '(') != std::count(style.begin(), style.end(), ')');
}

}  // namespace

bool InsertStyle(svg::Splice& splice, const svg::StartTag& tag, std::string_view style,
                 const std::string& declarations) {
    if (!tag.style) {
        splice.Insert(tag.nameEnd, " style=\"" + declarations + "\"");
        return true;
    }
    if (InsistsOnPaint(style)) {
        if (MayBeOpen(style)) return false;
        splice.Insert(tag.style.end, ";" + declarations);
    } else {
        splice.Insert(tag.style.value, declarations);
    }
    return true;
}

}  // namespace command
