#pragma once

#include <optional>
#include <string>

#include "host/geometry/matrix.h"
#include "host/gfx/outline.h"

namespace command {

/// A pen and a transformation as the command line writes them. Empty texts stand for the defaults.
struct PenTexts {
    std::string under, kind, width, stretch, angle, dashes, dotLength;
};

/// A pen, and what its object is about to be transformed by; lengths in document units.
struct PenRequest {
    CGE_OUTLINE pen;
    MATRIX under;
};

/// Without texts: a solid round nib of 2 points. Dashes make it a dot-dash pen; their length is the width
/// unless it is given. Empty, with one line in `mistake`, where a text is not what it should be.
std::optional<PenRequest> ReadPenRequest(const PenTexts& texts, std::string& mistake);

}  // namespace command
