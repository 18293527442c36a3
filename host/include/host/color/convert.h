#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "host/base/export.h"
#include "host/base/hash.h"
#include "host/color/colorspec.h"
#include "host/color/context.h"

/// Colour comparison and conversion. Pure; safe from any thread.
class FOM_API WClrConvert {
public:
    /// Three-way and exact: model, palette type, ink density, the reserved word, then the four components,
    /// each as the 16-bit number that is stored; a colour of a named palette by the bytes of its identity
    /// block as well. Nothing else of the identity block takes part. A total order whatever the bytes are;
    /// equal colours agree in every byte outside the identity block. Returns -1, 0 or 1.
    static int CompareColors(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) noexcept {
        if (std::memcmp(&a, &b, 16) == 0 && !a.IsNamedPalette()) return 0;
        return CompareUnequal(a, b);
    }

    /// Converts `in` to `model`, which must be a process model or the model of `in`. Process models convert
    /// among each other, through the context's profiles where it holds them for both sides and by the
    /// documented formulas otherwise (docs/color.md); the same model is a copy. Ink colours convert to
    /// process models by their stored appearance, thinned by their density, where they have one. The result
    /// is a plain colour; it keeps the identity block unless `in` is of a named palette. False, with `out`
    /// untouched, when there is no such conversion. `out` and `in` may be the same colour.
    static bool ConvertColorSpec(const ColorContext& context, CLR_COLORSPEC& out, ClrModel model,
                                 const CLR_COLORSPEC& in);
    /// Many colours at once to one model, each as ConvertColorSpec does; one profile transform per pair of
    /// profiles and pixel format serves all. Colours that have no conversion stay as they are. Returns how
    /// many are now of `model`. When an allocation fails, no colour has changed.
    static std::size_t ConvertColorSpecs(const ColorContext& context, std::span<CLR_COLORSPEC> colors,
                                         ClrModel model);
    /// 8-bit RGB of any colour for display. A colour without an appearance of its own (spot, indexed) shows
    /// as a tint of black by its density; an invalid one as black.
    static std::array<std::uint8_t, 3> GetDisplayRGB(const ColorContext& context, const CLR_COLORSPEC& color);
    static bool IsProcessModel(ClrModel model) noexcept;

private:
    static int CompareUnequal(const CLR_COLORSPEC& a, const CLR_COLORSPEC& b) noexcept;
};

namespace host {

/// Hashes exactly what WClrConvert::CompareColors reads: colours that compare equal hash equal.
inline void HashColorInto(Hasher& hasher, const CLR_COLORSPEC& color) noexcept {
    hasher.Bytes(&color, 16);
    if (color.IsNamedPalette()) hasher.Bytes(color.GetIdentity().data(), color.GetIdentity().size());
}

}  // namespace host
