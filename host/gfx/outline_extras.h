#pragma once

#include <memory>

#include "host/geometry/matrix.h"
#include "host/gfx/arrow_attribute.h"
#include "host/gfx/variable_attribute.h"
#include "host/gfx/wideline.h"

namespace host::detail {

/// The attributes that few outlines have.
struct OutlineExtras {
    std::shared_ptr<const CGE_WIDELINE> wideline;  // shared by copies, so never changed once it is here
    CGE_VARIABLEATTRIB variable;
    CGE_ARROWATTRIB leftArrow;
    CGE_ARROWATTRIB rightArrow;
    MATRIX project;

    /// Exactly: an identity with a -0.0 in it is not the default.
    bool IsDefault() const noexcept;
};

}  // namespace host::detail
