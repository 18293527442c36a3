#pragma once

#include "host/gfx/des9_wideline.h"

#include "gfx/field_fold.h"

namespace host::detail {

template <>
struct Fields<CGE_DES9_CYCLICAL_LINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_DES9_CYCLICAL_LINE;
        visit(1u, &R::width, "width");
        visit(2u, &R::lineDivision, "line division");
        visit(3u, &R::m_stylePoints, "style points");
        visit(4u, &R::m_hasFigures, "figures");
        visit(5u, &R::m_figurePoints, "figure points");
    }
    static bool Accepts(const CGE_DES9_CYCLICAL_LINE& line) noexcept {
        return line.m_figurePoints.size() == (line.m_hasFigures ? 2 * line.m_stylePoints.size() : 0);
    }
};

template <>
struct Fields<CGE_DES9_WIDELINE_STYLE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_DES9_WIDELINE_STYLE;
        visit(1u, &R::hollow, "hollow");
        visit(2u, &R::bar, "bar");
        visit(3u, &R::lengths, "lengths");
    }
};

template <>
struct Fields<CGE_DES9_WIDELINE_ENTRY> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_DES9_WIDELINE_ENTRY;
        visit(1u, &R::start, "start");
        visit(2u, &R::height, "height");
        visit(3u, &R::divide, "divide");
        visit(4u, &R::cap, "cap");
        visit(5u, &R::join, "join");
        visit(6u, &R::m_cyclical, "cyclical line");
        visit(7u, &R::m_style, "style");
    }
};

template <>
struct Fields<CGE_DES9_WIDELINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_DES9_WIDELINE;
        visit(1u, &R::threadWidth, "thread width");
        visit(2u, &R::divisions, "divisions");
        visit(3u, &R::entries, "entries");
    }
};

}  // namespace host::detail
