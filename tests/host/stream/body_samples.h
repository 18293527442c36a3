#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/base/temp_data.h"
#include "host/gfx/des9_wideline.h"
#include "host/gfx/fill.h"
#include "host/gfx/outline.h"

#include "support/blocks.h"

/// The records whose bodies stand in tests/golden/bodies.txt, under the same names.
namespace stream_test {

template <class Record>
using Named = std::vector<std::pair<std::string, Record>>;

inline VyrUtils::Guid SomeGuid() {
    return VyrUtils::Guid({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
}

inline CLR_COLORSPEC Cmyk(int cyan) {
    CLR_COLORSPEC color;
    color.MakeCMYK(cyan, 20, 30, 40);
    return color;
}

inline CLR_COLORSPEC PaletteColor() {
    CLR_COLORSPEC color;
    color.MakeSpot(0x00020001, 50);
    color.SetPaletteType(12);
    color.SetInkDensity(75);
    color.SetIdentity({0xF0, 0xF1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF});
    return color;
}

inline CGE_OUTLINE PlainPen() {
    CGE_OUTLINE pen;
    pen.type = OutlineSolid;
    pen.endCaps = 1;
    pen.join = 2;
    pen.width = 2000;
    pen.color = Cmyk(100);
    pen.SetMiterLimit(5000000);
    return pen;
}

inline CGE_DES9_WIDELINE Wideline() {
    CGE_DES9_WIDELINE wideline;
    wideline.threadWidth = 500;
    wideline.divisions = 12;
    wideline.SetNumberOfWidelineEntry(2);
    CGE_DES9_WIDELINE_ENTRY& line = wideline.entries[1];
    line.start = 3;
    line.height = 4;
    line.divide = 2;
    line.cap = 1;
    line.join = -1;
    line.SetCyclical(true);
    line.GetCyclical()->width = 800;
    line.GetCyclical()->lineDivision = 8;
    line.GetCyclical()->SetNumberOfStyles(1);
    line.GetCyclical()->StylePoints()[0] = 6;
    line.GetCyclical()->SetFigures(true);
    line.GetCyclical()->FigurePoints()[1] = -7;
    line.SetStyle(true);
    line.GetStyle()->hollow = line.GetStyle()->bar = true;
    line.GetStyle()->SetNumberOfLengths(2);
    line.GetStyle()->lengths[0] = 9;
    return wideline;
}

inline CGE_FILL Fountain() {
    CGE_FILL fill(FillFountain);
    CGE_FOUNTAINFILL& fountain = fill.EditFountain();
    fountain.SetFountainType(FountainConical);
    fountain.SetBlendRateMethod(BlendRateCustom);
    fountain.SetSpreadMethod(SpreadRepeat);
    fountain.SetLegacyBlendMode(BlendCounterClockwise);
    fountain.SetNumSteps(-2);
    fountain.SetPadding(49);
    fountain.SetBlendRateValue(51);
    fountain.SetAnisotropic(true);
    fountain.SetAngle(-90000000);
    fountain.SetCenterOffset(7, -8);
    fountain.SetUnits(FountainWorldCoordinates);
    fountain.SetOrigin({0.25, -0.0});
    fountain.SetMatrix({0.5, 0, 0, 0.5, 0.5, 0.5});
    fountain.SetBlendRateAcceleration(1.5);
    fountain.SetScreen({1, 0, 1, 30000000, 133});
    fountain.SetColors({{10, 0, PaletteColor()}, {255, 100, Cmyk(1)}});
    return fill;
}

inline CGE_FILL Hatch() {
    CGE_FILL fill(FillHatch);
    CGE_HATCHFILL& hatch = fill.EditHatch();
    hatch.background = Cmyk(5);
    hatch.screen.screenId = 3;
    hatch.modification = 0x107;
    hatch.spacingMultiplier = 2;
    hatch.thicknessMultiplier = 0.5;
    hatch.library.Set(L"Lib");
    hatch.name.Set(L"N\u00e4me");
    hatch.SetHatchArraySize(2);
    hatch.lines[1] = {{1, -2}, 3, 4, 5, PlainPen()};
    return fill;
}

inline void SetPattern(CGE_PATTERNFILL& pattern, std::uint32_t tmpFile, void* instance) {
    const std::string data = std::string("\0pattern", 8).append(kPatternDataSize - 8, '\0');
    pattern.patternData = testing_support::BlockOf(data);
    pattern.SetOwner(&pattern);
    pattern.tiling = {1, -2, 3, 4, 5, kTilingMirrorVertical};
    pattern.boundingBox = {-1, 2, 3, 4};
    pattern.originalBoundingBox = {5, 6, 7, 8};
    pattern.instance = instance;
    pattern.tmpFile = tmpFile;
}

/// Owns the blocks that the samples refer to.
class Samples {
public:
    Samples() {
        const auto add = [this](const char* name, CGE_FILL fill) {
            fills.emplace_back(name, std::move(fill));
        };
        CGE_FILL fill;
        add("fill-none", fill);
        fill.SetType(FillUniform);
        add("fill-uniform-defaults", fill);
        fill.EditUniform() = {PaletteColor(), {2, 0, 1, -1, 300}};
        fill.SetGuid(SomeGuid());
        add("fill-uniform", fill);
        add("fill-fountain", Fountain());
        CGE_FILL postScript(FillPostScript);
        postScript.EditPostScript() = {7, 8, {1, -2, 0, 0, 5}};
        add("fill-postscript", postScript);
        CGE_FILL mono(FillMonoBitmapAlt);
        mono.EditMonoBitmap() = {m_blocks[0], {8, 8}, Cmyk(1), Cmyk(2), {1}, 9};
        add("fill-mono", mono);
        CGE_FILL bitmap(FillColorBitmap);
        SetPattern(bitmap.EditColorBitmap(), TMPRegisterPrivateData(nullptr), this);
        add("fill-color-bitmap", bitmap);
        CGE_FILL vector(FillVector);
        SetPattern(vector.EditVector(), TMPCreateTmpFile(), nullptr);
        add("fill-vector", vector);
        CGE_FILL texture(FillTexture);
        SetPattern(texture.EditTexture(), 0, this);
        CGE_TXRINFO& info = texture.EditTexture().info;
        info.present = 1;
        info.resolution = 300;
        info.maxEdge = 1025;
        info.library.Set(L"Library");
        info.texture.Set(L"Texture");
        info.style.Set(L"An exactly 31 characters' style");
        info.parameters[103] = 1;
        add("fill-texture", texture);
        add("fill-hatch", Hatch());

        const auto addPen = [this](const char* name, CGE_OUTLINE pen) { outlines.emplace_back(name, pen); };
        addPen("outline-none", {});
        addPen("outline-plain", PlainPen());
        CGE_OUTLINE dashed = PlainPen();
        dashed.type = OutlineDotDash | 16;
        dashed.justification = 1;
        dashed.nibStretch = 50;
        dashed.nibAngle = -30000000;
        dashed.matrix.b = -0.0;
        dashed.color = PaletteColor();
        dashed.screen.overprint = dashed.overprint = 1;
        dashed.dotDash = {2, {3, -1, 0, 7}};
        dashed.dotLength = 1000;
        dashed.guid = SomeGuid();
        dashed.SetDashAdjust(DashAdjustAll);
        addPen("outline-dashed", dashed);
        CGE_OUTLINE wide;
        wide.SetToWideline(Wideline());
        addPen("outline-wideline", wide);
        CGE_OUTLINE extras;
        extras.leftArrow = m_blocks[0];
        extras.rightArrow = m_blocks[1];
        extras.SetVariableAttribute({{{0, 1, 2}, {1, -0.5, 0}}});
        extras.SetLeftArrowAttributes({kArrowMirrorAcross, 50, 200, 1, -1, 45000000});
        extras.SetRightArrowAttributes({0, 100, 99, 0, 0, 0});
        extras.SetProjectMatrix({1, 0, 0, 1, 5, 6});
        addPen("outline-extras", extras);
    }
    ~Samples() {
        MEMMANFree(m_blocks[0]);
        MEMMANFree(m_blocks[1]);
    }
    Samples(const Samples&) = delete;
    Samples& operator=(const Samples&) = delete;

    Named<CGE_FILL> fills;
    Named<CGE_OUTLINE> outlines;

private:
    HMEM m_blocks[2] = {MEMMANAlloc(1, true), MEMMANAlloc(2, true)};
};

}  // namespace stream_test
