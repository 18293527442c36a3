#include "fom/fill_record.h"

#include <fstream>
#include <gtest/gtest.h>

#include "host/base/temp_data.h"

#include "fom/fill_compare.h"
#include "fom/refcount_fill.h"

#include "support/alloc_faults.h"
#include "support/fill_generator.h"
#include "support/leak_check.h"
#include "support/temp_folder.h"

namespace {

using testing_support::FillGenerator;

const auto* const kOwner = reinterpret_cast<const WRefCountFill*>(std::uintptr_t{0x1230});

class FillRecord : public testing_support::LeakCheckedTest {
protected:
    /// A pattern record with a block and temporary data of its own.
    CGE_FILL MakePattern(CgeFillType kind) {
        CGE_FILL fill(kind);
        fill.EditPattern()->AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
        if (kind == FillVector)
            fill.EditVector().AdoptTmpFile(TMPCreateTmpFile(std::vector<std::byte>(5)));
        else
            fill.EditPattern()->AdoptTmpFile(TMPRegisterPrivateData(generator.Image(1, false)));
        return fill;
    }

    FillGenerator generator{11};
};

TEST_F(FillRecord, CopiesOwnTheirBlockAndTemporaryData) {
    for (CgeFillType kind : {FillColorBitmap, FillVector, FillTexture}) {
        CGE_FILL copy;
        {
            const CGE_FILL source = MakePattern(kind);
            copy = MakePattern(FillVector);
            RCF_CopyFill(&copy, &source, kOwner);
            EXPECT_NE(copy.Pattern()->patternData, source.Pattern()->patternData);
            EXPECT_NE(copy.Pattern()->tmpFile, source.Pattern()->tmpFile);
            EXPECT_EQ(source.Pattern()->GetOwner(), nullptr);
        }
        EXPECT_EQ(copy.Pattern()->GetOwner(), kOwner);
        const CGE_FILL again = MakePattern(kind);
        EXPECT_EQ(RCF_CompareCGEFills(&copy, &again, false), 0);
        RCF_CopyFill(&copy, &copy, nullptr);
        EXPECT_EQ(copy.Pattern()->GetOwner(), nullptr);
        EXPECT_NE(copy.Pattern()->tmpFile, 0u);
    }
}

TEST_F(FillRecord, CopyThatRunsOutOfMemoryLeavesTheDestination) {
    FillGenerator maker(1);
    for (CgeFillType kind : FillGenerator::kKinds) {
        CGE_FILL source = maker.Make(kind);
        source.EditHatch().SetHatchArraySize(2);
        CGE_FILL dst = maker.Make(FillHatch);
        const CGE_FILL before(dst);
        for (int whole = 0; whole < 2; ++whole) {
            CGE_FILL target(dst);
            testing_support::FailEachAllocation(
                [&] { whole ? RCF_CopyFill(&target, &source, kOwner) : UFMCopyCGEFill(&target, &source); },
                [&] { EXPECT_EQ(RCF_CompareCGEFills(&target, &before, false), 0); });
            EXPECT_EQ(RCF_CompareCGEFills(&target, &source, false), 0);
        }
    }
}

TEST_F(FillRecord, WholeCopyTakesStaleSubRecordsAndKindCopyDoesNot) {
    CGE_FILL source = MakePattern(FillVector);
    source.SetType(FillUniform);
    source.SetGuid(VyrUtils::Guid::Generate());
    CGE_FILL whole, kindOnly;
    RCF_CopyFill(&whole, &source, kOwner);
    EXPECT_NE(whole.Vector().tmpFile, 0u);
    EXPECT_NE(whole.Vector().tmpFile, source.Vector().tmpFile);
    EXPECT_EQ(whole.Vector().GetOwner(), nullptr);
    EXPECT_EQ(whole.GetGuid(), source.GetGuid());

    kindOnly = MakePattern(FillColorBitmap);
    const VyrUtils::Guid own = VyrUtils::Guid::Generate();
    kindOnly.SetGuid(own);
    UFMCopyCGEFill(&kindOnly, &source);
    EXPECT_EQ(kindOnly.GetType(), FillUniform);
    EXPECT_EQ(kindOnly.ColorBitmap().tmpFile, 0u);
    EXPECT_EQ(kindOnly.Vector().tmpFile, 0u);
    EXPECT_EQ(kindOnly.GetGuid(), own);

    const CGE_FILL unknown(static_cast<CgeFillType>(77));
    UFMCopyCGEFill(&kindOnly, &unknown);
    EXPECT_EQ(kindOnly.GetType(), 77);
    UFMCopyCGEFill(&source, &source);
    UFMCopyCGEFill(&source, nullptr);
    EXPECT_NE(source.Vector().tmpFile, 0u);
}

TEST_F(FillRecord, HatchAttributesGoBetweenHatchesOnly) {
    CGE_FILL from(FillHatch), to(FillHatch), other(FillUniform);
    from.EditHatch().SetHatchArraySize(3);
    from.EditHatch().lines[1].pen.width = 9;
    from.EditHatch().lines[1].angle = 4;
    from.EditHatch().thicknessMultiplier = 2;
    to.EditHatch().SetHatchArraySize(2);
    FILLCopyFillAttributes(&other, &from);
    EXPECT_EQ(other.Hatch().thicknessMultiplier, 0);
    FILLCopyFillAttributes(&to, &from);
    EXPECT_EQ(to.Hatch().thicknessMultiplier, 2);
    EXPECT_EQ(to.Hatch().GetNumLines(), 2u);
    EXPECT_EQ(to.Hatch().lines[1].pen.width, 9);
    EXPECT_EQ(to.Hatch().lines[1].angle, 0);
    RCF_CopyHatchFillData(&from, &other);
    EXPECT_EQ(from.GetType(), FillHatch);
}

TEST_F(FillRecord, OnlyPatternsWithTheirPatternAreValid) {
    for (CgeFillType kind : FillGenerator::kKinds) {
        const CGE_FILL fill(kind);
        EXPECT_EQ(IsFillValid(&fill), 0);
    }
    CGE_FILL mono(FillMonoBitmapAlt);
    mono.EditMonoBitmap().bitmap = generator.Bitmap(1, false);
    const CGE_FILL bitmap = MakePattern(FillColorBitmap), vector = MakePattern(FillVector);
    EXPECT_NE(IsFillValid(&mono) & IsFillValid(&bitmap) & IsFillValid(&vector), 0);
    const CGE_FILL texture = MakePattern(FillTexture);
    EXPECT_EQ(IsFillValid(&texture), 0);
    CGE_FILL noImage(FillColorBitmap);
    noImage.EditColorBitmap().AdoptTmpFile(TMPRegisterPrivateData(nullptr));
    EXPECT_EQ(IsFillValid(&noImage), 0);
}

TEST_F(FillRecord, VectorTakesTheBytesOfAFile) {
    testing_support::TempFolder folder;
    const std::wstring path = host::FromPath(folder / "pattern.svg");
    std::ofstream(host::ToPath(path)) << "<svg/>";
    CGE_VECTORFILL vector;
    FILLSetVectorFillFileName(&vector, path.c_str());
    char text[8] = {};
    EXPECT_EQ(TMPOpenTmpFile(vector.tmpFile)->Read(text, sizeof text), 6u);
    EXPECT_STREQ(text, "<svg/>");
    FILLSetVectorFillFileName(&vector, (path + L"x").c_str());
    EXPECT_EQ(vector.tmpFile, 0u);
}

TEST_F(FillRecord, ReallocationWithoutMemoryFreesTheOldRecord) {
    CGE_FILL* fill = RCF_CreateFill(FillVector);
    *fill = MakePattern(FillVector);
    fill = RCF_ReallocateFillMemory(fill, FillHatch);
    EXPECT_EQ(fill->GetType(), FillHatch);
    EXPECT_EQ(fill->Vector().tmpFile, 0u);
    testing_support::FailAllocation next(1);
    EXPECT_EQ(RCF_ReallocateFillMemory(fill, FillVector), nullptr);
}

}  // namespace
