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
        visit(1u, &R::width, "tile width");
        visit(2u, &R::height, "tile height");
        visit(3u, &R::xOffset, "tile x offset");
        visit(4u, &R::yOffset, "tile y offset");
        visit(5u, &R::interTileOffset, "inter-tile offset");
        visit(6u, &R::flags, "tile flags");
    }
};

template <>
struct Fields<CGE_UNIFORMFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_UNIFORMFILL::color, "colour");
        visit(2u, &CGE_UNIFORMFILL::screen, "screen");
    }
};

template <>
struct Fields<CGE_PSFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        visit(1u, &CGE_PSFILL::number, "pattern number");
        visit(2u, &CGE_PSFILL::reserved, "reserved word");
        visit(3u, &CGE_PSFILL::parameters, "parameters");
    }
};

template <>
struct Fields<CGE_MONOBMPFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_MONOBMPFILL;
        visit(1u, &R::bitmap, "bitmap");
        visit(2u, &R::tiling, "tiling");
        visit(3u, &R::foreground, "foreground");
        visit(4u, &R::background, "background");
        visit(5u, &R::screen, "screen");
        visit(6u, &R::engineSwitch, "engine switch");
    }
};

template <>
struct Fields<CGE_PATTERNFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_PATTERNFILL;
        visit(1u, &R::patternData, "pattern data");
        visit(2u, &R::tiling, "tiling");
        visit(3u, &R::boundingBox, "bounding box");
        visit(4u, &R::originalBoundingBox, "original bounding box");
        visit(5u, &R::instance, "instance");
        visit(6u, &R::tmpFile, "temporary data");
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
        visit(1u, &R::present, "texture present");
        visit(2u, &R::resolution, "texture resolution");
        visit(3u, &R::maxEdge, "maximum tile edge");
        visit(4u, &R::library, "texture library name");
        visit(5u, &R::texture, "texture name");
        visit(6u, &R::style, "texture style name");
        visit(7u, &R::parameters, "texture parameters");
    }
};

/// The pattern header's fields first, under their own numbers.
template <>
struct Fields<CGE_TEXTUREFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        Fields<CGE_PATTERNFILL>::Visit(visit);
        visit(7u, &CGE_TEXTUREFILL::info, "texture");
    }
};

template <>
struct Fields<CGE_HATCHLINE> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_HATCHLINE;
        visit(1u, &R::origin, "origin");
        visit(2u, &R::offset, "offset");
        visit(3u, &R::spacing, "spacing");
        visit(4u, &R::angle, "angle");
        visit(5u, &R::pen, "pen");
    }
};

template <>
struct Fields<CGE_HATCHFILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_HATCHFILL;
        visit(1u, &R::background, "background");
        visit(2u, &R::screen, "screen");
        visit(3u, &R::modification, "modification");
        visit(4u, &R::spacingMultiplier, "spacing multiplier");
        visit(5u, &R::thicknessMultiplier, "thickness multiplier");
        visit(6u, &R::library, "hatch library name");
        visit(7u, &R::name, "hatch name");
        visit(8u, &R::lines, "hatch lines");
    }
};

template <>
struct Fields<CGE_FILL> {
    template <class V>
    static constexpr void Visit(V&& visit) {
        using R = CGE_FILL;
        visit(1u, &R::m_kind, "kind");
        visit(2u, &R::m_guid, "GUID");
        visit(3u, &R::m_uniform, "uniform");
        visit(4u, &R::m_fountain, "fountain");
        visit(5u, &R::m_mono, "mono bitmap");
        visit(6u, &R::m_bitmap, "colour bitmap");
        visit(7u, &R::m_vector, "vector");
        visit(8u, &R::m_texture, "texture");
        visit(9u, &R::m_postScript, "PostScript");
        visit(10u, &R::m_hatch, "hatch");
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
