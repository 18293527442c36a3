#pragma once

#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/gfx/fill.h"

// Records that handles are made with.

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
