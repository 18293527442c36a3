#include "fom/fill_defaults.h"

#include <gtest/gtest.h>
#include <vector>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

#include "fom/fill_compare.h"
#include "fom/fill_handle.h"

#include "support/alloc_faults.h"
#include "support/fill_generator.h"
#include "support/leak_check.h"
#include "support/recording_services.h"

namespace {

using testing_support::FillGenerator;

CLR_COLORSPEC Cmyk(int c, int m, int y, int k) {
    CLR_COLORSPEC color;
    color.MakeCMYK(c, m, y, k);
    return color;
}

class FillDefaults : public testing_support::LeakCheckedTest {
protected:
    FillDefaults() {
        services.horizontalRulerUnit = host::kUnitInch;
        services.verticalRulerUnit = host::kUnitPixel;
        services.unitLengths = {{host::kUnitInch, 254000.0}, {host::kUnitPixel, 846.0}};
    }
    testing_support::RecordingServices services;
    testing_support::ServicesScope scope{services};
};

constexpr std::int32_t kInches4 = 1016000, kPixels1200 = 1015200;

/// A pattern header of the new-pattern box, as far as comparison reads it.
void SetHeader(CGE_PATTERNFILL& pattern, const CGE_TILING& tiling, const RECT& box = {0, 500000, 500000, 0}) {
    pattern.tiling = tiling;
    pattern.boundingBox = pattern.originalBoundingBox = box;
}
constexpr CGE_TILING kNewTiling{kInches4, kInches4, 0, 0, 0, 0};

/// What a request for `kind` gives on a record in which nothing stays.
CGE_FILL MakeExpected(CgeFillType kind) {
    const CLR_COLORSPEC black = Cmyk(0, 0, 0, 100), white = Cmyk(0, 0, 0, 0);
    CGE_FILL fill(kind == FillMonoBitmapAlt ? FillMonoBitmap : kind);
    fill.EditUniform().color = black;
    fill.EditFountain().SetColors({{0, 0, black}, {0, 100, white}});
    fill.EditFountain().SetAnisotropic(true);
    CGE_MONOBMPFILL& mono = fill.EditMonoBitmap();
    mono.bitmap = host::Installed().monoPatterns.GetPattern(0);
    mono.tiling = {kInches4, kPixels1200, 0, 0, 0, 0};
    mono.foreground = black;
    mono.background = white;
    mono.engineSwitch = 1;  // not the default's to set
    SetHeader(fill.EditVector(), kNewTiling);
    CGE_HATCHFILL& hatch = fill.EditHatch();
    hatch.background = white;
    hatch.spacingMultiplier = hatch.thicknessMultiplier = 1.0;
    hatch.SetHatchArraySize(1);
    hatch.lines[0].spacing = 25400;
    hatch.lines[0].angle = 45000000;
    CGE_OUTLINE& pen = hatch.lines[0].pen;
    pen.type = 2;
    pen.join = 1;
    pen.width = 762;
    pen.color = black;
    return fill;
}

TEST_F(FillDefaults, EachKindWhateverTheRecordHeld) {
    services.switchesOn = {L"OutlineJoinDefaultRound"};
    FillGenerator generator(2);
    for (CgeFillType kind :
         {FillNone, FillUniform, FillFountain, FillMonoBitmap, FillMonoBitmapAlt, FillVector, FillHatch}) {
        CGE_FILL fill(kind);
        for (const auto& field : FillGenerator::ComparedFields(kind))
            field.set(fill, 1, generator);
        fill.SetType(static_cast<CgeFillType>(99));
        fill.EditPostScript().number = 5;
        EXPECT_EQ(QELDLGSetDefaultCGEFill(&fill, kind), 1);
        const CGE_FILL expected = MakeExpected(kind);
        EXPECT_EQ(RCF_CompareCGEFills(&fill, &expected, false), 0) << kind;
        EXPECT_EQ(fill.PostScript().number, 5);
        EXPECT_EQ(QELDLGSetDefaultCGEFill(&fill, FillPostScript), 1);
        EXPECT_EQ(fill.PostScript().number, 0);
        EXPECT_EQ(QELDLGSetDefaultCGEFill(&fill, static_cast<CgeFillType>(5)), 0);
        EXPECT_EQ(fill.GetType(), FillPostScript);
    }
}

TEST_F(FillDefaults, VectorHeaders) {
    FillGenerator generator(2);
    struct Row {
        void (*make)(CGE_VECTORFILL*);
        CGE_TILING tiling;
        RECT box;
        std::size_t blockSize;
    };
    const Row rows[] = {
        {FILLInitCGEVector, kNewTiling, {0, 500000, 500000, 0}, 0},
        {FILLSetDefaultCGEVector, kNewTiling, {0, 500000, 500000, 0}, 584},
        {FILLSetDefaultTextureVectorInfo, {100, 100, 0, 0, 0, 4}, {0, 500000, 500000, 0}, 0},
        {RCF_SetDefaultCGEVector, {127000, 127000, 0, 0, 0, 0}, {0, 0, 1, 1}, 584},
    };
    for (const Row& row : rows) {
        CGE_FILL fill(FillVector), expected(FillVector);
        for (const auto& field : FillGenerator::ComparedFields(FillVector))
            field.set(fill, 1, generator);
        row.make(&fill.EditVector());
        SetHeader(expected.EditVector(), row.tiling, row.box);
        EXPECT_EQ(RCF_CompareCGEFills(&fill, &expected, false), 0) << &row - rows;
        EXPECT_EQ(MEMMANGetSize(fill.Vector().patternData), row.blockSize);
        row.make(nullptr);
    }
}

TEST_F(FillDefaults, TileSizeFollowsTheRuler) {
    const std::pair<int, std::int32_t> sizes[] = {{host::kUnitInch, 1016000},
                                                  {host::kUnitMillimetre, 1000000},
                                                  {host::kUnitTechnicalMillimetre, 1000000},
                                                  {host::kUnitPixel, kPixels1200},
                                                  {host::kUnitCentimetre, 1016000}};
    for (const auto& [unit, size] : sizes) {
        services.horizontalRulerUnit = unit;
        CGE_VECTORFILL vector;
        FILLInitCGEVector(&vector);
        EXPECT_EQ(vector.tiling.width, size);
        EXPECT_EQ(vector.tiling.height, size);
    }
    services.unitLengths[host::kUnitInch] = 1e300;
    CGE_VECTORFILL vector;
    FILLInitCGEVector(&vector);
    EXPECT_EQ(vector.tiling.width, INT32_MAX);
}

TEST_F(FillDefaults, ColorBitmapTakesTheFirstPattern) {
    services.bitmapNames = {L"Bricks", L"Dots"};
    services.recordQuestions = true;
    CGE_COLORBMPFILL bitmap;
    FILLSetDefaultCGEColorBitmap(&bitmap);
    EXPECT_NE(UDIIMGGetBaseImage(UDIIMGFromTmpFile(bitmap.tmpFile)), nullptr);
    EXPECT_EQ(bitmap.tiling, kNewTiling);
    EXPECT_NE(std::find(services.log.begin(), services.log.end(), "patterns.image Bricks"),
              services.log.end());
    services.bitmapNames = std::vector<host::WString>{};
    FILLSetDefaultCGEColorBitmap(&bitmap);
    EXPECT_EQ(bitmap.tmpFile, 0u);
}

TEST_F(FillDefaults, TextureTakesTheLastOneWithSizesThatRender) {
    struct Row {
        std::uint16_t resolution, maxEdge, expectedResolution, expectedMaxEdge;
    };
    services.rasterResolution = 150;
    services.lastUsedLibrary = L"Library that has a name of more than 31 units";
    for (const Row& row : {Row{0, 32, 150, 2049}, Row{1, 33, 1, 33}, Row{10000, 65535, 10000, 65535},
                           Row{10001, 0, 150, 2049}}) {
        services.lastUsedTexture = CGE_TXRINFO();
        services.lastUsedTexture->present = 1;
        services.lastUsedTexture->resolution = row.resolution;
        services.lastUsedTexture->maxEdge = row.maxEdge;
        CGE_TEXTUREFILL texture;
        texture.AdoptTmpFile(TMPRegisterPrivateData(nullptr));
        FILLSetDefaultCGETexture(&texture);
        EXPECT_EQ(texture.info.resolution, row.expectedResolution);
        EXPECT_EQ(texture.info.maxEdge, row.expectedMaxEdge);
        EXPECT_EQ(texture.info.present, 1u);
        EXPECT_EQ(texture.info.library.Get(), L"Library that has a name of more");
        EXPECT_EQ(texture.tmpFile, 0u);
        EXPECT_EQ(texture.tiling, kNewTiling);
        EXPECT_EQ(MEMMANGetSize(texture.patternData), 584u);
    }
}

TEST_F(FillDefaults, AFailedDefaultLeavesTheContent) {
    FillGenerator generator(9);
    for (CgeFillType kind : FillGenerator::kKinds) {
        CGE_FILL fill = generator.Make(kind);
        const CGE_FILL before(fill);
        testing_support::FailEachAllocation(
            [&] {
                CGE_FILL target(fill);
                try {
                    QELDLGSetDefaultCGEFill(&target, kind);
                } catch (const std::bad_alloc&) {
                    EXPECT_EQ(RCF_CompareCGEFills(&target, &before, false), 0) << kind;
                    throw;
                }
            },
            [] {});
    }
}

TEST_F(FillDefaults, NewFillsTakeTheColorsOfTheOneTheyReplace) {
    const CLR_COLORSPEC one = Cmyk(1, 2, 3, 4), two = Cmyk(5, 6, 7, 8), black = Cmyk(0, 0, 0, 100),
                        white = Cmyk(0, 0, 0, 0);
    struct Row {
        CgeFillType kind;
        CLR_COLORSPEC start, end;
    };
    CGE_FILL fill;
    fill.EditUniform().color = one;
    fill.EditFountain().SetColors({{0, 0, one}, {0, 50, black}, {0, 100, two}});
    fill.EditMonoBitmap().foreground = one;
    fill.EditMonoBitmap().background = two;
    fill.EditHatch().background = two;
    for (const Row& row :
         {Row{FillUniform, one, one}, Row{FillFountain, one, two}, Row{FillMonoBitmap, one, two},
          Row{FillHatch, two, two}, Row{FillNone, black, white}, Row{FillVector, black, white}}) {
        fill.SetType(row.kind);
        const WFillHandle handle(&fill);
        EXPECT_EQ(FILLGetDefaultStartColorFromFill(&handle), row.start) << row.kind;
        EXPECT_EQ(FILLGetDefaultEndColorFromFill(&handle), row.end) << row.kind;
    }
    const CGE_FILL noStops(FillFountain);
    const WFillHandle handle(&noStops);
    EXPECT_EQ(FILLGetDefaultEndColorFromFill(&handle), white);
}

}  // namespace
