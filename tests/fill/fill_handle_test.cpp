#include "fom/fill_handle.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "host/base/temp_data.h"

#include "fom/duplication.h"
#include "fom/fill_record.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using Pool = std::shared_ptr<WRCFillList>;

CLR_COLORSPEC Gray(int gray) {
    CLR_COLORSPEC color;
    color.MakeGray(gray);
    return color;
}

CLR_COLORSPEC Spot() {
    CLR_COLORSPEC color;
    color.MakeSpot(7, 100);
    return color;
}

/// Temporary data of one byte, deleted at the end.
class TmpBytes {
public:
    explicit TmpBytes(char content) {
        const std::byte byte{static_cast<unsigned char>(content)};
        m_id = TMPCreateTmpFile({&byte, 1});
    }
    ~TmpBytes() { TMPDeleteTmpFile(m_id); }
    unsigned Id() const { return m_id; }

private:
    unsigned m_id = 0;
};

/// Plain records, without the defaults that come from services.
CGE_FILL Record(CgeFillType kind) {
    CGE_FILL fill(kind);
    if (kind == FillUniform) fill.EditUniform().color = Gray(1);
    if (kind == FillFountain) fill.EditFountain().SetNumColors(2);
    if (kind == FillHatch) fill.EditHatch().SetHatchArraySize(1);
    return fill;
}

class FillHandle : public testing_support::LeakCheckedTest {
protected:
    /// The host keeps its two-colour patterns from the first use on.
    static void SetUpTestSuite() { WFillHandle(false).CreateFill(FillMonoBitmap, ColorContext()); }

    Pool pool = std::make_shared<WRCFillList>();
};

/// What a setter does: `Same` answers true, `Again` answers false after going through the pool.
enum class Outcome { Edits, Refuses, Same, Again };

struct Setter {
    CgeFillType kind;
    Outcome outcome;
    std::function<bool(WFillHandle&)> set;
};

bool SetTmp(WFillHandle& handle) {
    const TmpBytes bytes('x');
    return handle.SetTMPFileID(bytes.Id());
}

long* Digest(const void* bytes) {
    return WRefCountFill::NewDigestKey(bytes);
}

std::vector<Setter> Setters() {
    static const CLR_COLORSPEC two = Gray(2), one = Gray(1);
    static const CGE_FOUNTAINFILL stepped = [] {
        CGE_FOUNTAINFILL fountain;
        fountain.SetNumSteps(9);
        return fountain;
    }();
    static const CGE_TILING tile{3, 4, 0, 0, 0, 0}, noTile{};
    static const RECT box{1, 2, 3, 4}, noBox{};
    constexpr auto front = MONOCHROME_FOREGROUND, back = MONOCHROME_BACKGROUND;
    using Names = WRefCountFill::ColorNameMap;
    static const Names red{{0, L"red"}};
    using enum Outcome;
    using H = WFillHandle&;
    return {
        {FillUniform, Edits, [](H h) { return h.SetUniformColorspec(&two); }},
        {FillNone, Edits, [](H h) { return h.SetUniformColorspec(&two); }},
        {FillUniform, Refuses, [](H h) { return h.SetUniformColorspec(&one); }},
        {FillFountain, Again, [](H h) { return h.SetUniformColorspec(&two); }},
        {FillUniform, Refuses, [](H h) { return h.SetUniformColorspec(nullptr); }},
        {FillFountain, Edits, [](H h) { return h.SetFountainData(&stepped); }},
        {FillFountain, Refuses, [](H h) { return h.SetFountainData(&h.GetCGEFill()->Fountain()); }},
        {FillFountain, Edits, [](H h) { return h.SetFountainAngle(5); }},
        {FillFountain, Refuses, [](H h) { return h.SetFountainAngle(0); }},
        {FillUniform, Refuses, [](H h) { return h.SetFountainAngle(5); }},
        {FillFountain, Edits, [](H h) { return h.SetFountainOffset(0, 5); }},
        {FillFountain, Refuses, [](H h) { return h.SetFountainOffset(0, 0); }},
        {FillFountain, Edits, [](H h) { return h.SetFountainColorspec(&two, 1); }},
        {FillFountain, Refuses, [](H h) { return h.SetFountainColorspec(&two, 2); }},
        {FillFountain, Refuses, [](H h) { return h.SetFountainColorspec(h.GetFountainColorspec(0), 1); }},
        {FillMonoBitmap, Edits, [](H h) { return h.SetMonochromeColorspec(&two, back); }},
        {FillMonoBitmapAlt, Edits, [](H h) { return h.SetMonochromeColorspec(&two, front); }},
        {FillMonoBitmap, Refuses, [](H h) { return h.SetMonochromeColorspec(nullptr, front); }},
        {FillTexture, Edits, [](H h) { return h.SetCGETiling(&tile); }},
        {FillMonoBitmap, Same, [](H h) { return h.SetCGETiling(&noTile); }},
        {FillHatch, Refuses, [](H h) { return h.SetCGETiling(&tile); }},
        {FillVector, Refuses, [](H h) { return h.SetVectorData(nullptr); }},
        {FillVector, Edits, [](H h) { return SetTmp(h) && h.GetTMPFileID() != 0; }},
        {FillVector, Refuses, [](H h) { return h.SetTMPFileID(0); }},
        {FillColorBitmap, Edits, [](H h) { return h.SetBoundingBox(&box); }},
        {FillColorBitmap, Refuses, [](H h) { return h.SetBoundingBox(&noBox); }},
        {FillHatch, Edits, [](H h) { return h.SetOverprintFlag(OVERPRINT_ON); }},
        {FillUniform, Refuses, [](H h) { return h.SetOverprintFlag(OVERPRINT_NONE); }},
        {FillUniform, Refuses, [](H h) { return h.SetOverprintFlag(OVERPRINT_OFF); }},
        {FillVector, Refuses, [](H h) { return h.SetOverprintFlag(OVERPRINT_ON); }},
        {FillPostScript, Edits, [](H h) { return h.SetUserData(5); }},
        {FillPostScript, Same, [](H h) { return h.SetUserData(0); }},
        {FillVector, Edits, [](H h) { return h.SetDigestKey(Digest("sixteen bytes...")); }},
        {FillVector, Refuses,
         [](H h) { return h.SetDigestKey(Digest(h.GetRefCountFill()->GetDigestKey())); }},
        {FillUniform, Edits, [](H h) { return h.SetColorNameList(new Names(red)); }},
        {FillUniform, Refuses, [](H h) { return h.SetColorNameList(new Names); }},
        {FillUniform, Edits,
         [](H h) {
             Names* names = new Names(red);
             return h.SetColorNameList(names) && !h.SetColorNameList(names);
         }},
    };
}

TEST_F(FillHandle, SettersCopyOnWriteAndLeaveThePoolAloneOtherwise) {
    int number = 0;
    for (const Setter& setter : Setters()) {
        SCOPED_TRACE(number++);
        const CGE_FILL record = Record(setter.kind);
        WFillHandle edited(&record, pool);
        {
            const WFillHandle other = edited;
            const WRefCountFill* before = other.GetRefCountFill();
            const bool edits = setter.outcome == Outcome::Edits;
            EXPECT_EQ(edits || setter.outcome == Outcome::Same, setter.set(edited));
            EXPECT_EQ(!edits, edited.GetRefCountFill() == before);
            EXPECT_EQ(edits ? 1 : 2, before->GetReference());
            EXPECT_EQ(edits ? 1 : 2, edited.GetRefCountFill()->GetReference());
            EXPECT_EQ(edits ? 2u : 1u, pool->GetCount());
        }
        edited.SetCGEFill(&record);
        setter.set(edited);
        EXPECT_EQ(1u, pool->GetCount()) << "alone, it edits its own entry";
    }
}

TEST_F(FillHandle, EditsOfAnEntryOfItsOwnKeepWhatTheOrderDoesNotRead) {
    WFillHandle handle(true, pool);
    const CLR_COLORSPEC spot = Spot(), gray = Gray(3);
    handle.CreateSolidFill(&spot);
    handle.SetUserData(7);
    EXPECT_TRUE(handle.SetOverprintFlag(OVERPRINT_ON));
    EXPECT_EQ(OVERPRINT_ON, handle.GetOverprintFlag());
    EXPECT_EQ(7u, handle.GetUserData());
    WFillHandle shared = handle;
    EXPECT_TRUE(shared.SetUniformColorspec(&gray));
    EXPECT_EQ(0u, shared.GetUserData()) << "copies of shared entries leave user data behind";
    EXPECT_EQ(OVERPRINT_OFF, shared.GetOverprintFlag()) << "the default screen";
}

TEST_F(FillHandle, EqualFillsShareOneEntry) {
    WFillHandle a(true, pool);
    CLR_COLORSPEC black;
    black.MakeCMYKBlack();
    WFillHandle b(&black, pool), c(static_cast<const CLR_COLORSPEC*>(nullptr), pool);
    WFillHandle d(new WRefCountFill(true), pool);
    const WRefCountFill* entry = a.GetRefCountFill();
    EXPECT_EQ(4, entry->GetReference());
    EXPECT_TRUE(a.SameContentsAs(&b) && b.SameContentsAs(&c) && c.SameContentsAs(&d));
    EXPECT_FALSE(a.SameContentsAs(nullptr));

    WFillHandle shared(const_cast<WRefCountFill*>(entry), pool);
    EXPECT_EQ(5, entry->GetReference());
    WFillHandle elsewhere(const_cast<WRefCountFill*>(entry), std::make_shared<WRCFillList>());
    EXPECT_EQ(5, entry->GetReference());

    b.SetTilingMatrix({2, 0, 0, 2, 0, 0});
    EXPECT_FALSE(a.SameContentsAs(&b));
    a = b;
    EXPECT_TRUE(a.SameContentsAs(&b));
    CLR_COLORSPEC color;
    ASSERT_TRUE(WFillHandle(0x0000FFul, pool).GetPrimaryColor(color));
    EXPECT_EQ(255, color.GetComponent(0));
}

TEST_F(FillHandle, NewSolidFillsKeepTheScreen) {
    CGE_FILL record = Record(FillUniform);
    record.EditUniform().screen.frequency = 150;
    WFillHandle handle(&record, pool);
    handle.CreateSolidFill(handle.GetUniformColorspec());
    EXPECT_EQ(150u, handle.GetCGEFill()->Uniform().screen.frequency);
    EXPECT_TRUE(handle.SetUniformColorspec(handle.GetUniformColorspec()));
    EXPECT_EQ(CLR_SCREENSPEC(), handle.GetCGEFill()->Uniform().screen);
    EXPECT_TRUE(handle.CreateGradientFill(FountainRadial, handle.GetUniformColorspec(),
                                          handle.GetUniformColorspec(), 9));
    EXPECT_EQ(Gray(1), *handle.GetFountainColorspec(0));
    EXPECT_FALSE(handle.CreateGradientFill(FountainRadial, nullptr, nullptr, 9));
    EXPECT_EQ(2u, handle.GetNumFountainColors());
    for (const CgeFillType kind :
         {FillUniform, FillFountain, FillPostScript, FillHatch, FillVector, FillNone})
        EXPECT_EQ(kind, (handle.CreateFill(kind, ColorContext()), handle.GetCGEType()));
    handle.CreateFill(FillMonoBitmapAlt, ColorContext());
    EXPECT_EQ(FillMonoBitmap, handle.GetCGEType());
    EXPECT_EQ(1u, pool->GetCount());
}

TEST_F(FillHandle, ItsOwnFillIsAValidArgument) {
    for (const bool shared : {false, true}) {
        for (const CgeFillType kind : {FillNone, FillUniform, FillFountain, FillVector, FillHatch}) {
            const CGE_FILL record = Record(kind);
            WFillHandle handle(&record, pool);
            const std::unique_ptr<WFillHandle> other(shared ? new WFillHandle(handle) : nullptr);
            handle.SetCGEFill(handle.GetCGEFill());
            handle = *&handle;
            handle.Copy(handle);
            EXPECT_EQ(kind, handle.GetCGEType());
            EXPECT_EQ(shared ? 2 : 1, handle.GetRefCountFill()->GetReference());
            EXPECT_EQ(1u, pool->GetCount());
        }
    }
    WFillHandle handle(true, pool);
    handle.SetCGEFill(nullptr);
    EXPECT_EQ(FillNone, handle.GetCGEType());
}

TEST_F(FillHandle, DigestFollowsTheData) {
    const TmpBytes bytes('a'), same('a');
    const CGE_FILL record(FillVector);
    WFillHandle handle(&record, pool);
    ASSERT_TRUE(handle.SetTMPFileID(bytes.Id()));
    const long first = handle.GetRefCountFill()->GetDigestKey()[0];
    EXPECT_NE(0, first);
    ASSERT_TRUE(handle.SetDigestKey(WRefCountFill::NewDigestKey("sixteen bytes...")));
    const long given = handle.GetRefCountFill()->GetDigestKey()[0];
    handle.SetCGEFill(handle.GetCGEFill());
    EXPECT_EQ(given, handle.GetRefCountFill()->GetDigestKey()[0]) << "kept: the same temporary data";
    ASSERT_TRUE(handle.SetTMPFileID(same.Id()));
    EXPECT_EQ(first, handle.GetRefCountFill()->GetDigestKey()[0]);
    ASSERT_TRUE(handle.SetTMPFileID(0xFFFFFFF0u));
    EXPECT_EQ(0u, handle.GetTMPFileID());
}

// Pattern data is no part of what makes two fills equal.
TEST_F(FillHandle, PatternDataIsADuplicateThatNamesItsOwner) {
    const CGE_FILL record(FillVector);
    WFillHandle handle(&record, pool);
    const HMEM block = MEMMANAlloc(kPatternDataSize, true);
    ASSERT_TRUE(handle.SetVectorData(block));
    MEMMANFree(block);
    const HMEM own = handle.GetVectorData();
    EXPECT_NE(block, own);
    EXPECT_EQ(handle.GetRefCountFill(), handle.GetCGEFill()->Pattern()->GetOwner());
    EXPECT_FALSE(handle.SetVectorData(own));
    EXPECT_TRUE(handle.SetVectorData(nullptr));
    EXPECT_EQ(nullptr, handle.GetVectorData());
}

TEST_F(FillHandle, FailuresOfMemoryLoseNothing) {
    const std::vector<Setter> setters = Setters();
    std::size_t rounds = 0;
    for (const bool shared : {false, true}) {
        for (const Setter& setter : setters) {
            SCOPED_TRACE(&setter - setters.data());
            const CGE_FILL record = Record(setter.kind);
            const auto apart = std::make_shared<WRCFillList>();
            const WFillHandle untouched(&record, apart);
            WFillHandle handle(&record, pool);
            const WFillHandle other(shared ? handle : untouched);
            rounds += testing_support::FailEachAllocation(
                [&] { setter.set(handle); },
                [&] {
                    ASSERT_TRUE(handle.GetRefCountFill()->IsEquivalentTo(untouched.GetRefCountFill(), false));
                    ASSERT_EQ(shared ? 2 : 1, handle.GetRefCountFill()->GetReference());
                    ASSERT_EQ(1u, pool->GetCount());
                });
        }
    }
    EXPECT_NE(0u, rounds);
}

TEST_F(FillHandle, DuplicationSharesEntries) {
    VyrFOM::DuplicationContextImpl context;
    const WFillHandle handle(true, pool);
    EXPECT_EQ(handle.GetRefCountFill(), context.DuplicateFill(handle.GetRefCountFill()));
    const std::unique_ptr<WFillHandle> copy(context.DuplicateFillHandle(&handle));
    EXPECT_TRUE(copy->SameContentsAs(&handle));
    EXPECT_EQ(nullptr, context.DuplicateFillHandle(nullptr));
}

}  // namespace
