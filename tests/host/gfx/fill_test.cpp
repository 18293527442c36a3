#include "host/gfx/fill.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <string>

#include "host/base/temp_data.h"
#include "host/gfx/image.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

class Fill : public testing_support::LeakCheckedTest {};

std::uint32_t ImageEntry() {
    return TMPRegisterPrivateData(UDIIMGCreateFromRIMAGE(RIMAGE::Create(2, 2, 3, 8)));
}

std::string Content(std::uint32_t id) {
    const auto stream = TMPOpenTmpFile(id);
    std::string text(9, ' ');
    text.resize(stream ? stream->Read(text.data(), text.size()) : 0);
    return text;
}

std::array<const CGE_PATTERNFILL*, 3> Patterns(const CGE_FILL& fill) {
    return {&fill.ColorBitmap(), &fill.Vector(), &fill.Texture()};
}

/// Every sub-record holds something, whatever the kind.
CGE_FILL FullFill(CgeFillType kind) {
    CGE_FILL fill(kind);
    fill.SetGuid(VyrUtils::Guid::Generate());
    fill.EditUniform().color.MakeRGBBlack();
    fill.EditFountain().SetNumColors(3);
    fill.EditFountain().SetAngle(1);
    fill.EditPostScript().number = 4;
    fill.EditHatch().SetHatchArraySize(2);
    fill.EditHatch().name.Set(L"bricks");
    fill.EditMonoBitmap().engineSwitch = 1;
    fill.EditTexture().info.present = 1;
    for (CGE_PATTERNFILL* pattern : std::initializer_list<CGE_PATTERNFILL*>{
             &fill.EditColorBitmap(), &fill.EditVector(), &fill.EditTexture()}) {
        pattern->AdoptPatternData(MEMMANAlloc(kPatternDataSize, true));
        pattern->SetOwner(&kPatternDataSize);
        pattern->tiling.width = 5;
        pattern->boundingBox = {1, 2, 3, 4};
        pattern->originalBoundingBox = {5, 6, 7, 8};
        pattern->AdoptTmpFile(pattern == &fill.Vector() ? TMPCreateTmpFile(std::as_bytes(std::span("art", 3)))
                                                        : ImageEntry());
    }
    return fill;
}

void ExpectOwnCopy(const CGE_FILL& copy, const CGE_FILL& source) {
    EXPECT_EQ(copy.GetType(), source.GetType());
    EXPECT_EQ(copy.GetGuid(), source.GetGuid());
    EXPECT_EQ(copy.Uniform().color, source.Uniform().color);
    EXPECT_EQ(copy.Fountain().CompareTo(source.Fountain()), 0);
    EXPECT_EQ(copy.Hatch().GetNumLines(), 2u);
    EXPECT_EQ(copy.Hatch().name.Get(), L"bricks");
    EXPECT_EQ(copy.PostScript(), source.PostScript());
    EXPECT_EQ(copy.MonoBitmap().engineSwitch, 1);
    EXPECT_EQ(copy.Texture().info.present, 1u);
    for (std::size_t i = 0; i < 3; ++i) {
        const CGE_PATTERNFILL &own = *Patterns(copy)[i], &other = *Patterns(source)[i];
        EXPECT_NE(own.patternData, other.patternData);
        EXPECT_EQ(own.GetOwner(), other.GetOwner());
        EXPECT_NE(own.tmpFile, other.tmpFile);
        EXPECT_EQ(UDIIMGFromTmpFile(own.tmpFile), UDIIMGFromTmpFile(other.tmpFile));
        EXPECT_EQ(own.tiling, other.tiling);
        EXPECT_EQ(own.boundingBox, other.boundingBox);
        EXPECT_EQ(own.originalBoundingBox, other.originalBoundingBox);
    }
}

TEST_F(Fill, CopiesAreDeepForSubRecordsOfEveryKind) {
    CGE_FILL source = FullFill(FillHatch), assigned = FullFill(FillVector);
    const CGE_FILL copy(source);
    assigned = source;
    ExpectOwnCopy(copy, source);
    ExpectOwnCopy(assigned, source);
    source.Clear();
    EXPECT_EQ(Content(copy.Vector().tmpFile), "art");
    EXPECT_NE(UDIIMGGetBaseImage(UDIIMGFromTmpFile(assigned.ColorBitmap().tmpFile)), nullptr);
    EXPECT_NE(UDIIMGGetBaseImage(UDIIMGFromTmpFile(copy.Texture().tmpFile)), nullptr);

    const HMEM block = assigned.Vector().patternData;
    const CGE_FILL& self = assigned;
    assigned = self;
    assigned.EditVector() = self.Vector();
    EXPECT_EQ(assigned.Vector().patternData, block);
}

TEST_F(Fill, AssignmentWithoutMemoryChangesNothing) {
    using testing_support::FailEachAllocation;
    const CGE_FILL source = FullFill(FillHatch);
    CGE_FILL target = FullFill(FillHatch);
    target.SetType(FillVector);
    const CGE_FILL before(target);
    HMEM block = target.Vector().patternData;
    const auto unchanged = [&] {
        EXPECT_EQ(target.Vector().patternData, block);
        ExpectOwnCopy(target, before);
    };
    EXPECT_GE(FailEachAllocation([&] { target.EditVector() = source.Vector(); }, unchanged), 2u);
    block = target.Vector().patternData;
    EXPECT_GE(FailEachAllocation([&] { target = source; }, unchanged), 9u);
    EXPECT_EQ(target.GetType(), FillHatch);
    CGE_FOUNTAINFILL fountain;
    EXPECT_GE(
        FailEachAllocation([&] { fountain = source.Fountain(); }, [&] { EXPECT_EQ(fountain.GetAngle(), 0); }),
        1u);
    CGE_HATCHFILL hatch;
    EXPECT_GE(FailEachAllocation([&] { hatch = source.Hatch(); }, [&] { EXPECT_TRUE(hatch.name.IsEmpty()); }),
              1u);
}

TEST_F(Fill, PatternsTolerateWhatIsMissing) {
    CGE_FILL fill;
    fill.EditColorBitmap().AdoptTmpFile(ImageEntry());
    std::uint32_t gone = fill.ColorBitmap().tmpFile;
    FILLD_ZapTmpFileUdiImage(gone);
    fill.EditVector().AdoptTmpFile(fill.ColorBitmap().tmpFile);
    const CGE_FILL copy(fill);
    EXPECT_EQ(copy.ColorBitmap().tmpFile | copy.Vector().tmpFile, 0u);
    EXPECT_EQ(copy.Vector().patternData, nullptr);
}

TEST_F(Fill, OwnerIsTheLastWordOfTheBlock) {
    CGE_VECTORFILL vector;
    vector.SetOwner(&vector);
    EXPECT_EQ(vector.GetOwner(), nullptr);
    for (const std::size_t size : {sizeof(void*) - 1, kPatternDataSize}) {
        vector.AdoptPatternData(MEMMANAlloc(size, true));
        vector.SetOwner(&vector);
        EXPECT_EQ(vector.GetOwner(), size < sizeof(void*) ? nullptr : &vector);
    }
    vector.AdoptPatternData(vector.patternData);
    const auto* bytes = static_cast<const unsigned char*>(MEMMANLock(vector.patternData));
    const void* expected = &vector;
    EXPECT_EQ(std::memcmp(bytes + kPatternDataSize - sizeof expected, &expected, sizeof expected), 0);
    EXPECT_EQ(std::count(bytes, bytes + 576, 0), 576);
    MEMMANUnlock(vector.patternData);
}

TEST_F(Fill, FreeingMemoryLeavesTheOtherFieldsAndClearTheGuid) {
    CGE_FILL fill = FullFill(FillTexture);
    fill.EditMonoBitmap().bitmap = MEMMANAlloc(4, true);
    MEMMANFree(fill.MonoBitmap().bitmap);  // only a reference: freeing the fill must not touch it
    fill.FreeMemoryAndClear();
    EXPECT_EQ(fill.GetType(), FillTexture);
    EXPECT_EQ(fill.Fountain().GetNumColors() + fill.Hatch().GetNumLines(), 0u);
    EXPECT_EQ(fill.Fountain().GetAngle(), 1);
    EXPECT_EQ(fill.MonoBitmap().bitmap, nullptr);
    EXPECT_EQ(fill.MonoBitmap().engineSwitch, 1);
    for (const CGE_PATTERNFILL* pattern : Patterns(fill)) {
        EXPECT_EQ(pattern->patternData, nullptr);
        EXPECT_EQ(pattern->tmpFile, 0u);
        EXPECT_EQ(pattern->tiling.width, 5);
    }
    const VyrUtils::Guid guid = fill.GetGuid();
    fill.Clear();
    EXPECT_EQ(fill.GetGuid(), guid);
    EXPECT_EQ(fill.GetType(), FillNone);
    EXPECT_TRUE(fill.Uniform().color.IsInvalid());
    EXPECT_TRUE(fill.Hatch().name.IsEmpty());
    EXPECT_EQ(fill.Fountain().GetAngle() + fill.Texture().tiling.width + fill.MonoBitmap().engineSwitch, 0);
    EXPECT_EQ(fill.PostScript(), CGE_PSFILL());
}

TEST_F(Fill, AccessorsFollowTheKind) {
    for (unsigned kind = 0; kind <= 13; ++kind) {
        CGE_FILL fill(static_cast<CgeFillType>(kind));
        EXPECT_EQ(fill.Pattern() != nullptr, kind >= 9 && kind <= 11) << kind;
        EXPECT_EQ(fill.GetCGETiling() != nullptr, kind >= 7 && kind <= 11) << kind;
        EXPECT_EQ(fill.GetScreen() != nullptr, kind == 1 || kind == 2 || kind == 7 || kind == 8 || kind == 12)
            << kind;
        const CGE_PATTERNFILL* const pattern = fill.EditPattern();
        CGE_TILING* const tiling = fill.EditCGETiling();
        EXPECT_EQ(fill.Pattern(), pattern) << kind;
        EXPECT_EQ(fill.GetCGETiling(), tiling) << kind;
        if (!tiling) continue;
        tiling->flags = 4;
        EXPECT_EQ((kind < 9 ? fill.MonoBitmap().tiling : Patterns(fill)[kind - 9]->tiling).flags, 4) << kind;
        EXPECT_EQ(CGE_FILL(fill.GetType()).GetCGETiling()->flags, 0) << kind;
    }
}

}  // namespace
