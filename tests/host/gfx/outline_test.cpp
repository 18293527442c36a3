#include "host/gfx/outline.h"

#include <functional>
#include <type_traits>

#include "host/gfx/des9_wideline.h"

#include "gfx/outline_fields.h"
#include "record_probe.h"
#include "support/alloc_faults.h"
#include "support/blocks.h"
#include "support/leak_check.h"

namespace {

using gfx_test::HashOf;
using testing_support::BlockOf;
using Edit = std::function<void(CGE_OUTLINE&)>;

class Outline : public testing_support::LeakCheckedTest {};

int Compare(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
    return CGE_OUTLINE::CompareTo(a, b, false);
}

void ExpectDifferent(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
    gfx_test::ExpectDifferent(a, b, Compare);
}

CGE_DES9_WIDELINE Wideline() {
    CGE_DES9_WIDELINE wideline;
    wideline.SetNumberOfWidelineEntry(2);
    CGE_DES9_WIDELINE_ENTRY& line = wideline.entries[1];
    line.SetCyclical(true);
    line.GetCyclical()->SetNumberOfStyles(2);
    line.GetCyclical()->SetFigures(true);
    line.SetStyle(true);
    line.GetStyle()->SetNumberOfLengths(3);
    return wideline;
}

/// Every way to change the wideline, each to another value.
const std::vector<std::function<void(CGE_DES9_WIDELINE&)>> kWidelineEdits = {
    [](auto& w) { w.threadWidth = -1; },
    [](auto& w) { w.divisions = 1; },
    [](auto& w) { w.SetNumberOfWidelineEntry(3); },
    [](auto& w) { w.entries[0].start = 1; },
    [](auto& w) { w.entries[0].SetStyle(true); },
    [](auto& w) { w.entries[1].SetCyclical(false); },
    [](auto& w) { w.entries[1].GetStyle()->lengths[2] = 5; },
    [](auto& w) { w.entries[1].GetStyle()->bar = true; },
    [](auto& w) { w.entries[1].GetCyclical()->SetNumberOfStyles(1); },
    [](auto& w) { w.entries[1].GetCyclical()->SetFigures(false); },
    [](auto& w) { w.entries[1].GetCyclical()->StylePoints()[0] = 7; },
    [](auto& w) { w.entries[1].GetCyclical()->FigurePoints()[3] = 7; },
};

const std::vector<Edit> kExtraEdits = {
    [](CGE_OUTLINE& pen) { pen.SetWideline(std::make_unique<CGE_DES9_WIDELINE>()); },
    [](CGE_OUTLINE& pen) { pen.SetToWideline(Wideline()); },
    [](CGE_OUTLINE& pen) {
        pen.SetVariableAttribute({{{0, 1, 2}, {1, 3, 4}}});
    },
    [](CGE_OUTLINE& pen) {
        pen.SetVariableAttribute({{{0, 1, 2}, {1, 3, 5}}});
    },
    [](CGE_OUTLINE& pen) { pen.SetLeftArrowAttributes({kArrowMirrorAlong}); },
    [](CGE_OUTLINE& pen) { pen.SetRightArrowAttributes({kArrowMirrorAlong}); },
    [](CGE_OUTLINE& pen) {
        pen.SetProjectMatrix({1, -0.0, 0, 1, 0, 0});
    },
};

TEST_F(Outline, EveryByteButTheGuidTakesPart) {
    CGE_OUTLINE pen;
    pen.color.MakeCMYKBlack();
    pen.dotDash.count = 9;
    CGE_OUTLINE other = pen;
    std::vector<bool> own = gfx_test::WrittenBytes<CGE_OUTLINE>();
    const auto exclude = [&](auto& member) {
        gfx_test::Exclude(own, static_cast<std::size_t>(gfx_test::BytesOf(member) - gfx_test::BytesOf(pen)),
                          sizeof member);
    };
    exclude(pen.dotDash.element[9]);
    host::detail::Fields<CGE_OUTLINE>::Visit([&](unsigned, auto member, const char*) {
        using Field = std::remove_cvref_t<decltype(pen.*member)>;
        if constexpr (!std::is_trivially_copyable_v<Field> || std::is_same_v<Field, HMEM>)
            exclude(pen.*member);
    });
    exclude(pen.guid);
    gfx_test::ForEachChange(other, own, [&] { ExpectDifferent(pen, other); });
    other.guid = VyrUtils::Guid::Generate();
    EXPECT_EQ(Compare(pen, other), 0);
    EXPECT_EQ(HashOf(pen), HashOf(other));
}

TEST_F(Outline, ExtrasAreComparedAndBelongToOneCopy) {
    const CGE_OUTLINE plain;
    std::vector<CGE_OUTLINE> pens(1);
    for (const Edit& edit : kExtraEdits) {
        CGE_OUTLINE pen = pens.front(), same;
        edit(pen);
        EXPECT_EQ(Compare(pens.front(), plain), 0) << "the source of a copy changed";
        for (const CGE_OUTLINE& other : pens)
            ExpectDifferent(pen, other);
        edit(same);
        EXPECT_EQ(Compare(pen, same), 0);
        EXPECT_EQ(HashOf(pen), HashOf(same));
        pens.push_back(pen);
    }
    CGE_OUTLINE last = pens.back();
    last.SetProjectMatrix(MATRIX());
    EXPECT_EQ(HashOf(last), HashOf(plain)) << "defaults are as nothing";
    CGE_VARIABLEATTRIB profile = pens[3].GetVariableAttribute();
    profile.Scale(0.5);
    EXPECT_EQ(profile, (CGE_VARIABLEATTRIB{{{0, 0.5, 1}, {1, 1.5, 2}}}));
}

TEST_F(Outline, WidelinesCompareEveryPart) {
    std::vector<CGE_OUTLINE> pens(1);
    pens[0].type = 0x90 | OutlineSolid;
    pens[0].SetToWideline(Wideline());
    EXPECT_EQ(pens[0].type, 0x90 | OutlineWideline);
    for (const auto& edit : kWidelineEdits) {
        auto changed = dynamic_cast<const CGE_DES9_WIDELINE&>(*pens[0].GetWideline());
        edit(changed);
        EXPECT_EQ(CGE_DES9_WIDELINE::CompareTo(changed, Wideline(), true) == 0, pens.size() == 1)
            << "all but the thread width, which is the first edit";
        CGE_OUTLINE pen = pens[0];
        pen.SetWideline(changed.Clone());
        for (const CGE_OUTLINE& other : pens)
            ExpectDifferent(pen, other);
        pens.push_back(pen);
    }
}

TEST_F(Outline, WithoutMemoryNothingChanges) {
    using testing_support::FailEachAllocation;
    CGE_OUTLINE pen;
    pen.SetVariableAttribute({{{0, 9, 9}}});
    const CGE_OUTLINE before = pen;
    for (const Edit& edit : kExtraEdits) {
        pen = before;
        EXPECT_GE(FailEachAllocation([&] { edit(pen); }, [&] { EXPECT_EQ(Compare(pen, before), 0); }), 2u);
    }
    const CGE_DES9_WIDELINE source = Wideline();
    CGE_DES9_WIDELINE target;
    target.SetNumberOfWidelineEntry(5);
    const CGE_DES9_WIDELINE old = target;
    const auto unchanged = [&] { EXPECT_EQ(target.Compare(old), 0); };
    EXPECT_GE(FailEachAllocation([&] { target = source; }, unchanged), 4u);
    CGE_DES9_CYCLICAL_LINE& line = *target.entries[1].GetCyclical();
    EXPECT_EQ(
        FailEachAllocation([&] { line.SetNumberOfStyles(9); }, [&] { EXPECT_EQ(target.Compare(source), 0); }),
        2u);
    EXPECT_EQ(line.StylePoints().size() * 2, line.FigurePoints().size());
}

TEST_F(Outline, IdentityBlockOfTheColourCanBeSkipped) {
    CGE_OUTLINE a, b;
    b.color.SetIdentity({1});
    EXPECT_NE(Compare(a, b), 0);
    EXPECT_EQ(CGE_OUTLINE::CompareTo(a, b, true), 0);
    a.color.SetPaletteType(12);
    b.color.SetPaletteType(12);
    EXPECT_NE(CGE_OUTLINE::CompareTo(a, b, true), 0) << "a palette colour is its identity";
    b.color = a.color;
    b.color.SetComponent(2, 1);
    EXPECT_NE(CGE_OUTLINE::CompareTo(a, b, true), 0);
}

TEST_F(Outline, ArrowheadsCompareByContent) {
    const HMEM blocks[] = {nullptr, BlockOf(""), BlockOf("z"), BlockOf("ab"), BlockOf("ac")};
    for (HMEM CGE_OUTLINE::*arrow : {&CGE_OUTLINE::leftArrow, &CGE_OUTLINE::rightArrow})
        for (std::size_t n = 0; n < 25; ++n) {
            const std::size_t i = n / 5, j = n % 5;
            CGE_OUTLINE a, b;
            a.*arrow = blocks[i];
            b.*arrow = MEMMANDuplicate(blocks[j]);
            EXPECT_EQ(Compare(a, b) < 0, i < j) << n;
            EXPECT_EQ(Compare(a, b) == 0, i == j) << n;
            EXPECT_EQ(HashOf(a) == HashOf(b), i == j) << n;
            MEMMANFree(b.*arrow);
        }
    for (const HMEM block : blocks)
        MEMMANFree(block);
}

TEST_F(Outline, OnlyCountedDashesMatter) {
    CGE_OUTLINE a, b;
    const auto expectEqual = [&](bool equal) {
        EXPECT_EQ(Compare(a, b) == 0, equal);
        EXPECT_EQ(HashOf(a) == HashOf(b), equal);
        EXPECT_EQ(a.dotDash == b.dotDash, equal);
    };
    a.dotDash = {2, {3, 1, 9}};
    b.dotDash = {2, {3, 1, 7}};
    expectEqual(true);
    b.dotDash = {3, {-3, 1, 9}};
    EXPECT_LT(Compare(a, b), 0);
    a.dotDash.count = 3;
    EXPECT_GT(Compare(a, b), 0) << "elements are signed numbers";
    b.dotDash = a.dotDash;
    a.dotDash.count = 10;
    b.dotDash.count = 60000;
    expectEqual(true);
    b.dotDash.element[9] = 1;
    expectEqual(false);
}

TEST(DotDash, IsAddedUpAndConverted) {
    constexpr std::int32_t kMost = 0x7FFFFFFF;
    CGE_DOTDASHSPEC dots = {60000, {kMost, kMost, -40000, 32768, -5, 0, 0, 0, 0, 1}};
    EXPECT_EQ(CGEDotDashDotCount(dots), 2 * std::int64_t{kMost} - 40000 + 32768 - 4);
    const CGE_DOTDASHSPEC16 narrow = CGEDotDashTo16(dots);
    EXPECT_EQ(narrow.element, (std::array<std::int16_t, 10>{32767, 32767, -32768, 32767, -5, 0, 0, 0, 0, 1}));
    const CGE_DOTDASHSPEC wide = CGEDotDashFrom16(narrow);
    EXPECT_EQ(wide.count, 60000);
    EXPECT_EQ(wide, (CGE_DOTDASHSPEC{10, {32767, 32767, -32768, 32767, -5, 0, 0, 0, 0, 1}}));
    dots.count = 1;
    EXPECT_EQ(CGEDotDashDotCount(dots), kMost);
}

TEST_F(Outline, OrderIsTotal) {
    std::mt19937 random(3);
    std::vector<CGE_OUTLINE> pens(150);
    for (CGE_OUTLINE& pen : pens) {
        pen.nibAngle = static_cast<std::int32_t>(random() % 3) - 1;
        pen.matrix.b = random() % 2 ? -0.0 : 0.0;
        pen.dotDash.count = static_cast<std::uint16_t>(random() % 13);
        pen.dotDash.element[random() % 10] = static_cast<std::int32_t>(random() % 3) - 1;
        if (random() % 3 == 0) pen.color.MakeRGBBlack();
        if (random() % 3 == 0) kExtraEdits[random() % kExtraEdits.size()](pen);
    }
    gfx_test::ExpectTotalOrder(pens, Compare);
}

TEST_F(Outline, NoOutlineKeepsTheGuidAlone) {
    CGE_OUTLINE pen;
    pen.SetMiterLimit(7);
    for (const Edit& edit : kExtraEdits)
        edit(pen);
    EXPECT_TRUE(pen.GetWideline() && pen.GetVariableAttribute().points.size() == 2 &&
                pen.GetLeftArrowAttributes() == pen.GetRightArrowAttributes())
        << "an extra was lost by setting another";
    const VyrUtils::Guid guid = pen.guid = VyrUtils::Guid::Generate();
    pen.SetToNoOutline();
    EXPECT_EQ(Compare(pen, CGE_OUTLINE()), 0);
    EXPECT_EQ(pen.guid, guid);
}

}  // namespace
