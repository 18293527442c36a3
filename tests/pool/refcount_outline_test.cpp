#include "fom/refcount_outline.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "host/gfx/des9_wideline.h"
#include "host/services/calls.h"

#include "fom/line_pattern_preset.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

/// The arrowheads in use stay registered: tests that take some into use come without the check.
class RefCountOutline : public testing_support::LeakCheckedTest {};

CLR_COLORSPEC Gray(int gray) {
    CLR_COLORSPEC color;
    color.MakeGray(gray);
    return color;
}

CGE_OUTLINE Record(std::int32_t width, int gray) {
    CGE_OUTLINE record;
    record.type = OutlineSolid | 32;
    record.width = width;
    record.color = Gray(gray);
    record.guid = VyrUtils::Guid::Generate();
    return record;
}

int Sign(int value) {
    return (value > 0) - (value < 0);
}

TEST_F(RefCountOutline, IsMadeInEveryWay) {
    for (const bool visible : {false, true}) {
        const WRefCountOutline entry(visible);
        const CGE_OUTLINE& record = *entry.GetCGEOutline();
        EXPECT_EQ(record.type, visible ? 2 : 1);
        EXPECT_EQ(record.width, 50);
        EXPECT_EQ(record.nibStretch, 100);
        CLR_COLORSPEC black;
        black.MakeRGB(0, 0, 0);
        EXPECT_EQ(record.color, black);
        EXPECT_EQ(entry.GetReference(), 0);
        EXPECT_STREQ(entry.getClassName(), "WRefCountOutline");
    }
    EXPECT_EQ(WRefCountOutline(static_cast<const CGE_OUTLINE*>(nullptr)).GetCGEOutline()->type, 1);

    const CGE_DOTDASHSPEC dashes{2, {3, 1}};
    const CStdLinePatternPreset preset(dashes);
    const CLR_COLORSPEC gray = Gray(9);
    const WRefCountOutline pen(4000000000u, &gray, &preset, 0, 0);
    EXPECT_EQ(pen.GetCGEOutline()->type & 15, OutlineDotDash);
    EXPECT_EQ(pen.GetCGEOutline()->width, INT32_MAX);
    EXPECT_EQ(pen.GetCGEOutline()->color, gray);
    EXPECT_EQ(pen.GetCGEOutline()->dotDash, dashes);
}

TEST_F(RefCountOutline, CopiesColourAndRestApart) {
    const CGE_OUTLINE mine = Record(1, 10), theirs = Record(2, 20);
    for (const bool color : {false, true}) {
        for (const bool rest : {false, true}) {
            WRefCountOutline to(&mine), from(&theirs);
            to.SetColorName(L"mine");
            from.SetColorName(L"theirs");
            EXPECT_EQ(to.Copy(from, color, rest), color || rest);
            EXPECT_EQ(to.GetCGEOutline()->color, Gray(color ? 20 : 10));
            EXPECT_STREQ(to.GetColorName(), color ? L"theirs" : L"mine");
            EXPECT_EQ(to.GetCGEOutline()->width, rest ? 2 : 1);
            EXPECT_EQ(to.GetGuid(), rest ? theirs.guid : mine.guid);
            EXPECT_TRUE(to.Copy(to, true, true));
            EXPECT_NE(to.GetColorName(), nullptr);

            const WRefCountOutline copy(to);
            EXPECT_EQ(copy.GetColorName(), nullptr) << "the copy constructor leaves the name out";
            EXPECT_EQ(CGE_OUTLINE::CompareTo(*copy.GetCGEOutline(), *to.GetCGEOutline(), false), 0);
        }
    }
}

TEST_F(RefCountOutline, KeepsColourNames) {
    WRefCountOutline entry(true);
    EXPECT_EQ(entry.GetColorName(), nullptr);
    entry.SetColorName(std::wstring(40, L'x').c_str());
    EXPECT_EQ(entry.GetColorName(), std::wstring(31, L'x'));
    // A character of two units does not come in half.
    entry.SetColorName((std::wstring(30, L'x') + L"\U0001F58C").c_str());
    EXPECT_EQ(entry.GetColorName(), std::wstring(30, L'x'));
    entry.SetColorName(entry.GetColorName() + 20);
    EXPECT_EQ(entry.GetColorName(), std::wstring(10, L'x'));
    testing_support::FailEachAllocation([&] { entry.SetColorName(L"another"); },
                                        [&] { EXPECT_EQ(entry.GetColorName(), std::wstring(10, L'x')); });
    entry.SetColorName(L"");
    EXPECT_EQ(entry.GetColorName(), nullptr);
}

TEST_F(RefCountOutline, ComesInTheOrderOfNamesThenRecords) {
    const CGE_OUTLINE thin = Record(1, 0), thick = Record(2, 0);
    // Rising. Names count by their first 16 characters, and by the low byte of a character first.
    const struct {
        const wchar_t* name;
        const CGE_OUTLINE* record;
        bool sameAsBefore = false;
    } rows[] = {
        {nullptr, &thin},
        {nullptr, &thick},
        {L"\x0100", &thin},
        {L"Blue", &thin},
        {L"Blue", &thick},
        {L"Bluebottle", &thin},
        {L"exactly sixteen!", &thin},
        {L"exactly sixteen! and more", &thin, true},
        {L"exactly sixteen! and more", &thick},
    };
    std::vector<std::unique_ptr<WRefCountOutline>> entries;
    std::vector<int> ranks;
    for (const auto& row : rows) {
        entries.push_back(std::make_unique<WRefCountOutline>(row.record));
        entries.back()->GetCGEOutline()->guid = VyrUtils::Guid::Generate();
        entries.back()->SetColorName(row.name);
        ranks.push_back(ranks.empty() ? 0 : ranks.back() + !row.sameAsBefore);
    }
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i]->Compare(nullptr, false), 1);
        for (std::size_t j = 0; j < entries.size(); ++j) {
            SCOPED_TRACE(std::to_string(i) + " and " + std::to_string(j));
            const int order = Sign(entries[i]->Compare(entries[j].get(), false));
            EXPECT_EQ(order, Sign(ranks[i] - ranks[j]));
            EXPECT_EQ(entries[i]->IsEquivalentTo(entries[j].get(), true), order == 0);
            EXPECT_EQ(entries[i]->GetHash() == entries[j]->GetHash(), order == 0);
        }
    }
}

TEST_F(RefCountOutline, OverprintIsOnOffOrNone) {
    WRefCountOutline entry(true);
    for (const auto& [flag, told] : {std::pair(OVERPRINT_ON, OVERPRINT_ON),
                                     {OVERPRINT_OFF, OVERPRINT_OFF},
                                     {OVERPRINT_NONE, OVERPRINT_OFF}}) {
        EXPECT_TRUE(entry.SetOverprintFlag(flag));
        EXPECT_EQ(entry.GetOverprintFlag(), told);
    }
    entry.GetCGEOutline()->overprint = 0x80000000u;
    EXPECT_EQ(entry.GetOverprintFlag(), OVERPRINT_OFF);
    entry.GetCGEOutline()->overprint = 7;
    EXPECT_EQ(entry.GetOverprintFlag(), OVERPRINT_ON);
    entry.GetCGEOutline()->type = 32 | OutlineNone;
    EXPECT_EQ(entry.GetOverprintFlag(), OVERPRINT_NONE);
}

TEST(RefCountOutlineArrows, ComeFromTheList) {
    const int count = WRefCountOutline::GetArrowStyleCount();
    ASSERT_GE(count, 20);
    WRefCountOutline entry(true);
    EXPECT_TRUE(entry.SetLeftArrowStyle(static_cast<unsigned>(count)));
    EXPECT_TRUE(entry.SetRightArrowStyle(1));
    const HMEM left = entry.GetCGEOutline()->leftArrow, right = entry.GetCGEOutline()->rightArrow;
    EXPECT_EQ(WRefCountOutline::GetArrowStyle(left), count);
    EXPECT_EQ(WRefCountOutline::GetArrowStyle(right), 1);
    EXPECT_NE(right, ARRGetArrowheadHandle(0)) << "the list may go before the outline";
    EXPECT_FALSE(entry.SetLeftArrowStyle(static_cast<unsigned>(count) + 1));
    EXPECT_EQ(entry.GetCGEOutline()->leftArrow, left);
    EXPECT_EQ(WRefCountOutline::GetArrowStyle(nullptr), -1);

    HMEM own = MEMMANAlloc(64, true);
    EXPECT_EQ(WRefCountOutline::GetArrowStyle(own), -1);
    entry.GetCGEOutline()->leftArrow = own;
    {
        const WRefCountOutline shared(entry.GetCGEOutline(), false), duplicate(entry.GetCGEOutline(), true);
        EXPECT_EQ(shared.GetCGEOutline()->leftArrow, own);
        const HMEM copied = duplicate.GetCGEOutline()->leftArrow;
        EXPECT_NE(copied, own);
        EXPECT_TRUE(ARRAreArrowsSame(copied, own));
        EXPECT_EQ(duplicate.Compare(&shared, false), 0);
        EXPECT_EQ(duplicate.GetCGEOutline()->rightArrow, right) << "one block for equal arrowheads";
    }
    EXPECT_TRUE(entry.SetLeftArrowStyle(0));
    EXPECT_EQ(entry.GetCGEOutline()->leftArrow, nullptr);
    MEMMANFree(own);

    const WRefCountOutline pen(100, nullptr, nullptr, 1, static_cast<unsigned>(count) + 1);
    EXPECT_EQ(pen.GetCGEOutline()->leftArrow, right);
    EXPECT_EQ(pen.GetCGEOutline()->rightArrow, nullptr);
}

}  // namespace
