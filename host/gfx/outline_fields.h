#pragma once

#include "host/gfx/outline.h"

#include "gfx/field_fold.h"

namespace host::detail {

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
    }
};

}  // namespace host::detail
