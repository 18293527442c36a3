#include "fom/refcount_fill.h"

#include <cstring>
#include <gtest/gtest.h>

#include "fom/fill_record.h"

#include "support/alloc_faults.h"
#include "support/fill_generator.h"
#include "support/leak_check.h"

namespace {

using testing_support::FillGenerator;

class RefCountFillTest : public testing_support::LeakCheckedTest {};

int Sign(int order) {
    return (order > 0) - (order < 0);
}

/// A pooled entry in all its parts: any kind, user data, digest and names of few values.
std::unique_ptr<WRefCountFill> RandomEntry(FillGenerator& generator) {
    const CGE_FILL record = generator.Make();
    auto entry = std::make_unique<WRefCountFill>(&record);
    entry->SetUserData(generator.Pick(4) == 0 ? 0x80000000u : 0);
    entry->CalculateDigestKey();
    if (generator.Pick(3) == 0) entry->SetColorName(generator.Pick(2) ? L"Blue" : L"blue", generator.Pick(2));
    if (generator.Pick(4) == 0) entry->SetColorName(L"Red", 7);
    if (generator.Pick(8) == 0) entry->SetColorNameList(new WRefCountFill::ColorNameMap);
    if (generator.Pick(32) == 0) entry->DeallocateFillMemory();
    return entry;
}

TEST_F(RefCountFillTest, OrderIsTotalAndHashesAgree) {
    FillGenerator generator(9);
    std::vector<std::unique_ptr<WRefCountFill>> all;
    for (int i = 0; i < 220; ++i)
        all.push_back(RandomEntry(generator));
    for (const auto& a : all) {
        EXPECT_GT(a->Compare(nullptr, false), 0);
        for (const auto& b : all) {
            const int order = a->Compare(b.get(), false);
            ASSERT_EQ(Sign(order), -Sign(b->Compare(a.get(), false)));
            ASSERT_TRUE(order != 0 || a->GetHash() == b->GetHash());
            ASSERT_TRUE(order < 0 || a->GetFillType() >= b->GetFillType());
            if (order >= 0) continue;
            for (const auto& c : all)
                ASSERT_TRUE(b->Compare(c.get(), false) >= 0 || a->Compare(c.get(), false) < 0);
        }
    }
}

TEST_F(RefCountFillTest, WhatComparisonIgnoresChangesNoHash) {
    FillGenerator generator(10);
    unsigned pairs = 0;
    for (int i = 0; i < 600; ++i) {
        const CGE_FILL record = generator.Make();
        if (record.Pattern()) continue;
        const CGE_FILL twin = generator.MakeEqual(record);
        const WRefCountFill a(&record);
        const WRefCountFill b(&twin);
        ASSERT_EQ(a.Compare(&b, false), 0);
        ASSERT_EQ(a.GetHash(), b.GetHash());
        ++pairs;
    }
    EXPECT_GT(pairs, 300u);
}

TEST_F(RefCountFillTest, KeysDecideInTheirOrder) {
    WRefCountFill none(false), solid(true), marked(true), named(true), empty(true), later(true);
    marked.SetUserData(0x80000000u);
    named.SetColorName(L"B", 1);
    later.SetColorName(L"A", 2);
    empty.SetColorNameList(new WRefCountFill::ColorNameMap);
    none.SetUserData(0xFFFFFFFFu);
    EXPECT_LT(none.Compare(&solid, false), 0) << "kind before user data";
    EXPECT_LT(named.Compare(&marked, false), 0) << "user data, unsigned, before names";
    EXPECT_LT(solid.Compare(&named, false), 0);
    EXPECT_LT(named.Compare(&later, false), 0) << "index before name";
    EXPECT_TRUE(solid.IsEquivalentTo(&empty, false)) << "a map without names is none";
    named.SetColorName(L"A", 2);
    EXPECT_LT(later.Compare(&named, false), 0) << "count before index";

    auto identity = solid.GetCGEFill()->Uniform().color.GetIdentity();
    identity[0] = 1;
    solid.GetCGEFill()->EditUniform().color.SetIdentity(identity);
    EXPECT_GT(solid.Compare(&empty, false), 0);
    EXPECT_EQ(solid.Compare(&empty, true), 0) << "the mode leaves the identity out";
}

TEST_F(RefCountFillTest, CopiesTakeWhatTheyShould) {
    WRefCountFill source(true);
    source.SetUserData(5);
    source.SetColorName(L"Night", 0);
    source.SetDigestKey(WRefCountFill::NewDigestKey("0123456789abcdef"));
    source.AddReference(3);
    const WRefCountFill copy(source);
    EXPECT_EQ(copy.GetReference(), 0);
    EXPECT_EQ(copy.GetUserData(), 0u);
    EXPECT_STREQ(copy.GetColorName(0), L"Night");

    WRefCountFill target(false);
    target.SetColorName(L"Old", 1);
    target.SetUserData(9);
    target.Copy(source);
    EXPECT_EQ(target.GetNumColorNames(), 0u);
    EXPECT_EQ(target.GetUserData(), 9u);
    EXPECT_EQ(std::memcmp(target.GetDigestKey(), "0123456789abcdef", 16), 0);
    EXPECT_EQ(target.GetFillType(), FillUniform);
    source.Copy(source);
    EXPECT_STREQ(source.GetColorName(0), L"Night");
    source.CopyColorNameList(&source);
    EXPECT_EQ(source.GetNumColorNames(), 1u);
    source.SetColorName(L"", 0);
    EXPECT_EQ(source.GetColorName(0), nullptr);

    CGE_FILL* owned = source.GetCGEFillCopy();
    EXPECT_EQ(owned->Uniform().color, source.GetCGEFill()->Uniform().color);
    RCF_DeleteFill(owned);
    source.DeallocateFillMemory();
    EXPECT_EQ(source.GetCGEFillCopy(), nullptr);
    EXPECT_TRUE(source.GetGuid().IsNil());
    target.Copy(source);
    EXPECT_EQ(target.GetCGEFill(), nullptr);
}

TEST_F(RefCountFillTest, CopyFailsWithoutATrace) {
    FillGenerator generator(3);
    for (const CgeFillType kind : FillGenerator::kKinds) {
        const CGE_FILL record = generator.Make(kind);
        WRefCountFill source(&record);
        source.SetDigestKey(WRefCountFill::NewDigestKey("0123456789abcdef"));
        source.SetColorName(L"a name that is longer than a short string", 1);
        WRefCountFill target(true);
        target.SetColorName(L"kept", 2);
        testing_support::FailEachAllocation([&] { target.Copy(source); },
                                            [&] {
                                                ASSERT_EQ(target.GetFillType(), FillUniform);
                                                ASSERT_STREQ(target.GetColorName(2), L"kept");
                                            });
        EXPECT_GT(testing_support::FailEachAllocation([&] { WRefCountFill copy(source); }, [] {}), 0u);
        EXPECT_EQ(target.GetFillType(), kind);
    }
}

// Not leak-checked: the host keeps the patterns that the defaults show.
TEST(RefCountFillBuildersTest, MakeTheirKinds) {
    const ColorContext context;
    WRefCountFill entry(true);
    for (const CgeFillType kind : FillGenerator::kKinds) {
        entry.CreateFillForPatternDlg(kind, context);
        EXPECT_EQ(entry.GetFillType(), kind == FillMonoBitmapAlt ? FillMonoBitmap : kind);
        const bool hasField = kind == FillUniform || kind == FillFountain || kind == FillMonoBitmap ||
                              kind == FillMonoBitmapAlt || kind == FillHatch;
        EXPECT_EQ(entry.SetOverprintFlag(OVERPRINT_ON), hasField) << kind;
        EXPECT_EQ(entry.GetOverprintFlag(), hasField ? OVERPRINT_ON : OVERPRINT_NONE) << kind;
        EXPECT_TRUE(kind != FillHatch || entry.GetCGEFill()->Hatch().lines.at(0).pen.overprint == 1u);
        EXPECT_EQ(entry.SetOverprintFlag(OVERPRINT_OFF), hasField);
        EXPECT_EQ(entry.GetOverprintFlag(), hasField ? OVERPRINT_OFF : OVERPRINT_NONE) << kind;
    }
    entry.CreateDefaultMonoBitmapFill();
    entry.GetCGEFill()->EditMonoBitmap().engineSwitch = 3;
    entry.CreateDefaultMonoBitmapFill();
    EXPECT_EQ(entry.GetCGEFill()->MonoBitmap().engineSwitch, 0);
    entry.CreateFillForPatternDlg(static_cast<CgeFillType>(4), context);
    EXPECT_EQ(entry.GetFillType(), FillNone);
}

TEST_F(RefCountFillTest, GradientAndSolidTakeTheirColours) {
    WRefCountFill entry(true);
    CLR_COLORSPEC red;
    red.MakeRGB(255, 0, 0);
    EXPECT_FALSE(entry.CreateGradientFill(FountainLinear, nullptr, &red, 5));
    EXPECT_FALSE(entry.CreateGradientFill(FountainNone, &red, &red, 5));
    EXPECT_EQ(entry.GetFillType(), FillUniform);
    // A colour of the record that is being replaced.
    EXPECT_TRUE(entry.CreateGradientFill(FountainConical, &entry.GetCGEFill()->Uniform().color, &red, 70000));
    const CGE_FOUNTAINFILL& fountain = entry.GetCGEFill()->Fountain();
    CLR_COLORSPEC black;
    black.MakeCMYKBlack();
    EXPECT_EQ(fountain.GetColor(0).color, black);
    EXPECT_EQ(fountain.GetColor(1).color, red);
    EXPECT_EQ(fountain.GetColor(1).position, 100);
    EXPECT_EQ(fountain.GetFountainType(), FountainConical);
    EXPECT_EQ(fountain.GetNumSteps(), 32767);
    EXPECT_TRUE(fountain.GetAnisotropic());
    entry.CreateSolidFill(&fountain.GetColor(1).color, nullptr);
    EXPECT_EQ(entry.GetCGEFill()->Uniform().color, red);
    EXPECT_EQ(entry.GetCGEFill()->Uniform().screen, CLR_SCREENSPEC());
}

}  // namespace
