#pragma once

#include <string>

#include "fom/pen_request.h"

namespace command {

/// A pen before and after it was fitted to a transformation of its object.
struct PenFit {
    CGE_OUTLINE before, after;
    MATRIX under;
};

PenFit FitPen(const PenRequest& request);

/// A table for people.
std::string ToText(const PenFit& fit);
/// One object for programs, indented; lengths in document units, angles in degrees.
std::string ToJson(const PenFit& fit);

}  // namespace command
