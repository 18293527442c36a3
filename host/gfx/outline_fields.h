#pragma once

#include "host/gfx/outline.h"

#include "gfx/field_fold.h"
#include "gfx/outline_extras.h"

namespace host::detail {

template <>
struct Fields<CGE_ARROWATTRIB> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_ARROWATTRIB;
        visit(1u, &R::flags);
        visit(2u, &R::xScale);
        visit(3u, &R::yScale);
        visit(4u, &R::xOffset);
        visit(5u, &R::yOffset);
        visit(6u, &R::rotation);
    }
};

template <>
struct Fields<CGE_VARIABLEPOINT> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_VARIABLEPOINT;
        visit(1u, &R::position);
        visit(2u, &R::left);
        visit(3u, &R::right);
    }
};

template <>
struct Fields<CGE_VARIABLEATTRIB> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_VARIABLEATTRIB::points);
    }
};

template <>
struct Fields<OutlineExtras> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = OutlineExtras;
        visit(1u, &R::wideline);
        visit(2u, &R::variable);
        visit(3u, &R::leftArrow);
        visit(4u, &R::rightArrow);
        visit(5u, &R::project);
    }
};

template <>
struct Fields<CGE_OUTLINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_OUTLINE;
        visit(1u, &R::type);
        visit(2u, &R::endCaps);
        visit(3u, &R::join);
        visit(4u, &R::justification);
        visit(5u, &R::width);
        visit(6u, &R::nibStretch);
        visit(7u, &R::nibAngle);
        visit(8u, &R::matrix);
        visit(9u, &R::color);
        visit(10u, &R::screen);
        visit(11u, &R::overprint);
        visit(12u, &R::dotDash);
        visit(13u, &R::leftArrow);
        visit(14u, &R::rightArrow);
        visit(15u, &R::dotLength);
        visit(16u, &R::guid);
        visit(17u, &R::m_miterLimit);
        visit(18u, &R::m_dashAdjust);
        visit(19u, &R::m_extras);
    }
};

}  // namespace host::detail
