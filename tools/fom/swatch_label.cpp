#include "fom/swatch_label.h"

#include <cmath>
#include <cstdio>

#include "host/color/convert.h"

#include "fom/document_units.h"

namespace command {
namespace {

std::string Counted(std::size_t count, const char* thing) {
    return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

const char* FountainName(ClrFountainFillType type) noexcept {
    switch (type) {
        case FountainLinear:
            return "linear";
        case FountainRadial:
            return "radial";
        case FountainConical:
            return "conical";
        case FountainSquare:
            return "square";
        case FountainNone:
            break;
    }
    return "no fountain";
}

SwatchLabel LabelOfFountain(const CGE_FOUNTAINFILL& fountain) {
    SwatchLabel label{FountainName(fountain.GetFountainType()), {}};
    if (fountain.GetSpreadMethod() == SpreadReflect) label.name += " reflected";
    if (fountain.GetSpreadMethod() == SpreadRepeat) label.name += " repeated";
    label.name += ", " + Counted(fountain.GetNumColors(), "stop");
    constexpr unsigned most = 2;
    const unsigned count = fountain.GetNumColors();
    for (unsigned i = 0; i < count; ++i) {
        if (count > most && i > 0 && i + 1 < count) continue;
        if (!label.detail.empty()) label.detail += count > most ? " \u2026 " : " ";
        label.detail += ColorText(fountain.GetColor(i).color);
    }
    return label;
}

SwatchLabel LabelOfTile(const char* name, const CGE_TILING& tiling) {
    const bool shares = (tiling.flags & kTilingScaleWithObject) != 0;
    const double scale = shares ? 1 : kUnitsPerPixel;
    char text[64];
    std::snprintf(text, sizeof text, shares ? "%.0f \u00d7 %.0f %%" : "%.4g \u00d7 %.4g px",
                  tiling.width / scale, tiling.height / scale);
    return {name, text};
}

}  // namespace

std::string ColorText(const CLR_COLORSPEC& color) {
    const auto rgb = WClrConvert::GetDisplayRGB(ColorContext::GetActiveColorContext(), color);
    char text[16];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", rgb[0], rgb[1], rgb[2]);
    return text;
}

SwatchLabel LabelOf(const CGE_FILL& fill) {
    switch (fill.GetType()) {
        case FillNone:
            return {"none", {}};
        case FillUniform:
            return {ColorText(fill.Uniform().color), {}};
        case FillFountain:
            return LabelOfFountain(fill.Fountain());
        case FillPostScript:
            return {"PostScript", "pattern " + std::to_string(fill.PostScript().number)};
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return LabelOfTile("mono bitmap", fill.MonoBitmap().tiling);
        case FillColorBitmap:
            return LabelOfTile("colour bitmap", fill.ColorBitmap().tiling);
        case FillVector:
            return LabelOfTile("vector", fill.Vector().tiling);
        case FillTexture:
            return {"texture", host::ToUtf8(fill.Texture().info.texture.Get())};
        case FillHatch:
            return {"hatch", Counted(fill.Hatch().GetNumLines(), "kind") + " of lines"};
    }
    return {"unknown", {}};
}

}  // namespace command
