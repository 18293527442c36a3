#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "svg/omissions.h"

namespace command {

/// What became of the drawings of a document.
struct RewriteReport {
    struct Drawing {
        std::string name;
        std::size_t shapes = 0;
        std::size_t painted = 0;   ///< whose paints come from the document alone
        svg::Omissions omissions;  ///< what was lost when the document was made
        svg::Omissions reasons;    ///< what else may show, and why shapes keep paints of the drawing
        std::string error;         ///< empty when the drawing was rewritten
    };

    std::vector<Drawing> drawings;

    std::size_t Shapes() const;
    std::size_t Painted() const;
};

std::string ToText(const RewriteReport& report);
std::string ToJson(const RewriteReport& report);

}  // namespace command
