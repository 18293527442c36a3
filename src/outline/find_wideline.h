#pragma once

#include "host/gfx/des9_wideline.h"
#include "host/gfx/outline.h"

namespace VyrFOM {

/// The enhanced line style that the outline is drawn in; null when it is drawn in none.
inline const CGE_DES9_WIDELINE* FindWideline(const CGE_OUTLINE& outline) noexcept {
    if ((outline.type & OutlineWideline) == 0) return nullptr;
    return dynamic_cast<const CGE_DES9_WIDELINE*>(outline.GetWideline());
}

}  // namespace VyrFOM
