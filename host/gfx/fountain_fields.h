#pragma once

#include "host/gfx/fountain_fill.h"

#include "gfx/field_fold.h"

namespace host::detail {

template <>
struct Fields<CGE_FOUNTAINFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_FOUNTAINFILL;
        visit(1u, &R::m_type, "type");
        visit(2u, &R::m_rateMethod, "blend rate method");
        visit(3u, &R::m_spread, "spread method");
        visit(4u, &R::m_blendMode, "legacy blend mode");
        visit(5u, &R::m_steps, "number of steps");
        visit(6u, &R::m_padding, "padding");
        visit(7u, &R::m_rateValue, "blend rate value");
        visit(8u, &R::m_anisotropic, "anisotropic");
        visit(9u, &R::m_angle, "angle");
        visit(10u, &R::m_centerX, "centre offset x");
        visit(11u, &R::m_centerY, "centre offset y");
        visit(12u, &R::m_units, "units");
        visit(13u, &R::m_origin, "origin");
        visit(14u, &R::m_matrix, "matrix");
        visit(15u, &R::m_acceleration, "blend rate acceleration");
        visit(16u, &R::m_screen, "screen");
        visit(17u, &R::m_colors, "colours");
    }
    static bool Accepts(const CGE_FOUNTAINFILL& fountain) noexcept {
        return fountain.m_colors.size() <= CGE_FOUNTAINFILL::kMaxColors;
    }
};

}  // namespace host::detail
