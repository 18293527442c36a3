#pragma once

#include <memory>

#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/gfx/fill.h"

#include "fom/refcount_fill.h"

// Making and counting entries, for the sources of WFillHandle.

inline CGE_FILL MakeUniformFill(const CLR_COLORSPEC& color,
                                const CLR_SCREENSPEC& screen = CLR_SCREENSPEC()) noexcept {
    CGE_FILL fill(FillUniform);
    fill.EditUniform().color = color;
    fill.EditUniform().screen = screen;
    return fill;
}

inline CGE_FILL MakeBlackFill() noexcept {
    CLR_COLORSPEC black;
    black.MakeCMYKBlack();
    return MakeUniformFill(black);
}

/// Pooled entries count their holders though they are constant in everything else.
inline void AddHolder(const WRefCountFill* entry) noexcept {
    const_cast<WRefCountFill*>(entry)->AddReference(1);
}

/// What copying an entry leaves out as well.
inline std::unique_ptr<WRefCountFill> CopyWithUserData(const WRefCountFill& entry) {
    auto copy = std::make_unique<WRefCountFill>(entry);
    copy->SetUserData(entry.GetUserData());
    return copy;
}
