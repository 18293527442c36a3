#pragma once

#include "host/gfx/fountain_fill.h"

#include "gfx/field_fold.h"

namespace host::detail {

template <>
struct Fields<CGE_FOUNTAINFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_FOUNTAINFILL;
        visit(1u, &R::m_type);
        visit(2u, &R::m_rateMethod);
        visit(3u, &R::m_spread);
        visit(4u, &R::m_blendMode);
        visit(5u, &R::m_steps);
        visit(6u, &R::m_padding);
        visit(7u, &R::m_rateValue);
        visit(8u, &R::m_anisotropic);
        visit(9u, &R::m_angle);
        visit(10u, &R::m_centerX);
        visit(11u, &R::m_centerY);
        visit(12u, &R::m_units);
        visit(13u, &R::m_origin);
        visit(14u, &R::m_matrix);
        visit(15u, &R::m_acceleration);
        visit(16u, &R::m_screen);
        visit(17u, &R::m_colors);
    }
    static bool Accepts(const CGE_FOUNTAINFILL& fountain) noexcept {
        return fountain.m_colors.size() <= CGE_FOUNTAINFILL::kMaxColors;
    }
};

}  // namespace host::detail
