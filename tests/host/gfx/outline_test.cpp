#include "host/gfx/outline.h"

#include "host/base/memory.h"

#include "record_probe.h"
#include "support/leak_check.h"

namespace {

using gfx_test::HashOf;

class Outline : public testing_support::LeakCheckedTest {};

int Compare(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
    return CGE_OUTLINE::CompareTo(a, b, false);
}

HMEM Block(std::string_view bytes) {
    const HMEM block = MEMMANAlloc(bytes.size(), false);
    std::memcpy(MEMMANLock(block), bytes.data(), bytes.size());
    MEMMANUnlock(block);
    return block;
}

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
    exclude(pen.guid);
    exclude(pen.leftArrow);
    exclude(pen.rightArrow);
    exclude(pen.dotDash.element[9]);
    for (std::size_t i = 0; i < own.size(); ++i) {
        if (!own[i]) continue;
        gfx_test::BytesOf(other)[i] ^= 1;
        EXPECT_NE(Compare(pen, other), 0) << "byte " << i;
        EXPECT_EQ(Compare(pen, other) < 0, Compare(other, pen) > 0) << "byte " << i;
        EXPECT_NE(HashOf(pen), HashOf(other)) << "byte " << i;
        gfx_test::BytesOf(other)[i] ^= 1;
    }
    other.guid = VyrUtils::Guid::Generate();
    EXPECT_EQ(Compare(pen, other), 0);
    EXPECT_EQ(HashOf(pen), HashOf(other));
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
    const HMEM blocks[] = {nullptr, Block(""), Block("z"), Block("ab"), Block("ac")};
    for (HMEM CGE_OUTLINE::*arrow : {&CGE_OUTLINE::leftArrow, &CGE_OUTLINE::rightArrow})
        for (std::size_t i = 0; i < 5; ++i)
            for (std::size_t j = 0; j < 5; ++j) {
                CGE_OUTLINE a, b;
                a.*arrow = blocks[i];
                b.*arrow = MEMMANDuplicate(blocks[j]);
                EXPECT_EQ(Compare(a, b) < 0, i < j) << i << ' ' << j;
                EXPECT_EQ(Compare(a, b) == 0, i == j) << i << ' ' << j;
                EXPECT_EQ(HashOf(a) == HashOf(b), i == j) << i << ' ' << j;
                MEMMANFree(b.*arrow);
            }
    for (const HMEM block : blocks)
        MEMMANFree(block);
}

TEST_F(Outline, OnlyCountedDashesMatter) {
    CGE_OUTLINE a, b;
    a.dotDash = {2, {3, 1, 9}};
    b.dotDash = {2, {3, 1, 7}};
    EXPECT_EQ(Compare(a, b), 0);
    EXPECT_EQ(HashOf(a), HashOf(b));
    b.dotDash = {3, {-3, 1, 9}};
    EXPECT_LT(Compare(a, b), 0);
    a.dotDash.count = 3;
    EXPECT_GT(Compare(a, b), 0) << "elements are signed numbers";
    a.dotDash.count = 10;
    b.dotDash = a.dotDash;
    b.dotDash.count = 60000;
    EXPECT_EQ(Compare(a, b), 0);
    EXPECT_EQ(HashOf(a), HashOf(b));
    b.dotDash.element[9] = 1;
    EXPECT_NE(Compare(a, b), 0);
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
    }
    gfx_test::ExpectTotalOrder(pens, Compare);
}

TEST_F(Outline, NoOutlineKeepsTheGuidAlone) {
    CGE_OUTLINE pen;
    pen.type = OutlineDotDash | 0x80;
    pen.SetMiterLimit(7);
    const VyrUtils::Guid guid = pen.guid = VyrUtils::Guid::Generate();
    pen.SetToNoOutline();
    EXPECT_EQ(Compare(pen, CGE_OUTLINE()), 0);
    EXPECT_EQ(pen.guid, guid);
}

}  // namespace
