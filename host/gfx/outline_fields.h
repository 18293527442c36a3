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
        visit(1u, &R::flags, "flags");
        visit(2u, &R::xScale, "x scale");
        visit(3u, &R::yScale, "y scale");
        visit(4u, &R::xOffset, "x offset");
        visit(5u, &R::yOffset, "y offset");
        visit(6u, &R::rotation, "rotation");
    }
};

template <>
struct Fields<CGE_VARIABLEPOINT> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_VARIABLEPOINT;
        visit(1u, &R::position, "position");
        visit(2u, &R::left, "left");
        visit(3u, &R::right, "right");
    }
};

template <>
struct Fields<CGE_VARIABLEATTRIB> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_VARIABLEATTRIB::points, "points");
    }
};

template <>
struct Fields<OutlineExtras> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = OutlineExtras;
        visit(1u, &R::wideline, "wideline");
        visit(2u, &R::variable, "variable width");
        visit(3u, &R::leftArrow, "left arrow attributes");
        visit(4u, &R::rightArrow, "right arrow attributes");
        visit(5u, &R::project, "project matrix");
    }
};

template <>
struct Fields<CGE_OUTLINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_OUTLINE;
        visit(1u, &R::type, "type");
        visit(2u, &R::endCaps, "end caps");
        visit(3u, &R::join, "join");
        visit(4u, &R::justification, "justification");
        visit(5u, &R::width, "width");
        visit(6u, &R::nibStretch, "nib stretch");
        visit(7u, &R::nibAngle, "nib angle");
        visit(8u, &R::matrix, "matrix");
        visit(9u, &R::color, "colour");
        visit(10u, &R::screen, "screen");
        visit(11u, &R::overprint, "overprint");
        visit(12u, &R::dotDash, "dot-dash");
        visit(13u, &R::leftArrow, "left arrowhead");
        visit(14u, &R::rightArrow, "right arrowhead");
        visit(15u, &R::dotLength, "dot length");
        visit(16u, &R::guid, "GUID");
        visit(17u, &R::m_miterLimit, "miter limit");
        visit(18u, &R::m_dashAdjust, "dash adjust");
        visit(19u, &R::m_extras, "extras");
    }
};

}  // namespace host::detail
