#pragma once

#include "host/gfx/fill.h"

#include "gfx/field_fold.h"
#include "gfx/fountain_fields.h"
#include "gfx/outline_fields.h"

namespace host::detail {

template <>
struct Fields<CGE_TILING> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_TILING;
        visit(1u, &R::width);
        visit(2u, &R::height);
        visit(3u, &R::xOffset);
        visit(4u, &R::yOffset);
        visit(5u, &R::interTileOffset);
        visit(6u, &R::flags);
    }
};

template <>
struct Fields<CGE_UNIFORMFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_UNIFORMFILL::color);
        visit(2u, &CGE_UNIFORMFILL::screen);
    }
};

template <>
struct Fields<CGE_PSFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_PSFILL::number);
        visit(2u, &CGE_PSFILL::reserved);
        visit(3u, &CGE_PSFILL::parameters);
    }
};

template <>
struct Fields<CGE_MONOBMPFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_MONOBMPFILL;
        visit(1u, &R::bitmap);
        visit(2u, &R::tiling);
        visit(3u, &R::foreground);
        visit(4u, &R::background);
        visit(5u, &R::screen);
        visit(6u, &R::engineSwitch);
    }
};

template <>
struct Fields<CGE_PATTERNFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_PATTERNFILL;
        visit(1u, &R::patternData);
        visit(2u, &R::tiling);
        visit(3u, &R::boundingBox);
        visit(4u, &R::originalBoundingBox);
        visit(5u, &R::instance);
        visit(6u, &R::tmpFile);
    }
};
template <>
struct Fields<CGE_COLORBMPFILL> : Fields<CGE_PATTERNFILL> {};
template <>
struct Fields<CGE_VECTORFILL> : Fields<CGE_PATTERNFILL> {};

template <>
struct Fields<CGE_TXRINFO> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_TXRINFO;
        visit(1u, &R::present);
        visit(2u, &R::resolution);
        visit(3u, &R::maxEdge);
        visit(4u, &R::library);
        visit(5u, &R::texture);
        visit(6u, &R::style);
        visit(7u, &R::parameters);
    }
};

/// The pattern header's fields first, under their own numbers.
template <>
struct Fields<CGE_TEXTUREFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        Fields<CGE_PATTERNFILL>::Visit(visit);
        visit(7u, &CGE_TEXTUREFILL::info);
    }
};

template <>
struct Fields<CGE_HATCHLINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_HATCHLINE;
        visit(1u, &R::origin);
        visit(2u, &R::offset);
        visit(3u, &R::spacing);
        visit(4u, &R::angle);
        visit(5u, &R::pen);
    }
};

template <>
struct Fields<CGE_HATCHFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_HATCHFILL;
        visit(1u, &R::background);
        visit(2u, &R::screen);
        visit(3u, &R::modification);
        visit(4u, &R::spacingMultiplier);
        visit(5u, &R::thicknessMultiplier);
        visit(6u, &R::library);
        visit(7u, &R::name);
        visit(8u, &R::lines);
    }
};

template <>
struct Fields<CGE_FILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_FILL;
        visit(1u, &R::m_kind);
        visit(2u, &R::m_guid);
        visit(3u, &R::m_uniform);
        visit(4u, &R::m_fountain);
        visit(5u, &R::m_mono);
        visit(6u, &R::m_bitmap);
        visit(7u, &R::m_vector);
        visit(8u, &R::m_texture);
        visit(9u, &R::m_postScript);
        visit(10u, &R::m_hatch);
    }
    /// Kind and GUID, and of the sub-records the one that the kind names.
    static constexpr bool IsStored(const CGE_FILL& fill, unsigned number) noexcept {
        return number <= 2 || number == SubRecord(fill.m_kind);
    }

private:
    static constexpr unsigned SubRecord(CgeFillType kind) noexcept {
        switch (kind) {
            case FillUniform:
                return 3;
            case FillFountain:
                return 4;
            case FillMonoBitmap:
            case FillMonoBitmapAlt:
                return 5;
            case FillColorBitmap:
                return 6;
            case FillVector:
                return 7;
            case FillTexture:
                return 8;
            case FillPostScript:
                return 9;
            case FillHatch:
                return 10;
            default:
                return 0;
        }
    }
};

}  // namespace host::detail
