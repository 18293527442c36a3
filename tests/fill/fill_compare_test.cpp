#include "fom/fill_compare.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "host/base/temp_data.h"

#include "fill/fill_hash.h"
#include "support/alloc_faults.h"
#include "support/fill_generator.h"
#include "support/leak_check.h"

namespace {

using testing_support::FillGenerator;

int Sign(int value) {
    return (value > 0) - (value < 0);
}
int Order(const CGE_FILL& a, const CGE_FILL& b) {
    return Sign(RCF_CompareCGEFills(&a, &b, false));
}
std::uint64_t Hash(const CGE_FILL& fill) {
    host::Hasher hasher;
    VyrFOM::HashFillInto(hasher, fill);
    return hasher.Finish();
}

class FillOrder : public testing_support::LeakCheckedTest,
                  public ::testing::WithParamInterface<CgeFillType> {};

TEST_P(FillOrder, IsATotalOrderThatAgreesWithTheHash) {
    FillGenerator generator(GetParam() + 1u);
    std::vector<CGE_FILL> fills;
    fills.reserve(40);
    for (int i = 0; i < 40; ++i)
        fills.push_back(generator.Make(i % 8 == 0 ? FillUniform : GetParam()));
    const std::size_t count = fills.size();
    std::vector<int> order(count * count);
    for (std::size_t a = 0; a < count; ++a)
        for (std::size_t b = 0; b < count; ++b)
            order[a * count + b] = Order(fills[a], fills[b]);
    for (std::size_t a = 0; a < count; ++a) {
        for (std::size_t b = 0; b < count; ++b) {
            const int ab = order[a * count + b];
            ASSERT_EQ(ab, -order[b * count + a]);
            ASSERT_TRUE(ab != 0 || Hash(fills[a]) == Hash(fills[b]));
            for (std::size_t c = 0; c < count && ab <= 0; ++c) {
                if (order[b * count + c] > 0) continue;
                ASSERT_EQ(order[a * count + c], std::min(ab, order[b * count + c]));
            }
        }
    }
}

TEST_P(FillOrder, LeavesOutWhatIsNoContent) {
    FillGenerator generator(GetParam());
    for (int i = 0; i < 200; ++i) {
        const CGE_FILL fill = generator.Make(GetParam());
        const CGE_FILL equal = generator.MakeEqual(fill);
        ASSERT_EQ(Order(fill, equal), 0);
        ASSERT_EQ(Hash(fill), Hash(equal));
    }
}

TEST_P(FillOrder, ReadsEveryFieldOfTheContent) {
    FillGenerator generator(1);
    CGE_FILL base(GetParam());
    for (const auto& field : FillGenerator::ComparedFields(GetParam()))
        field.set(base, 0, generator);
    for (const auto& field : FillGenerator::ComparedFields(GetParam())) {
        for (unsigned value = 1; value < FillGenerator::kValues; ++value) {
            CGE_FILL other(base);
            field.set(other, value, generator);
            EXPECT_NE(Order(base, other), 0) << field.name << " " << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, FillOrder, ::testing::ValuesIn(FillGenerator::kKinds));

TEST(FillCompare, KindDecidesFirst) {
    FillGenerator generator(3);
    for (int i = 0; i < 200; ++i) {
        const CGE_FILL a = generator.Make(), b = generator.Make();
        if (a.GetType() == b.GetType()) continue;
        EXPECT_EQ(Order(a, b), a.GetType() < b.GetType() ? -1 : 1);
    }
}

TEST(FillCompare, IdentityOfAUniformColorCanBeLeftOut) {
    CGE_FILL a(FillUniform), b(FillUniform);
    b.EditUniform().color.SetIdentity({0, 0, 1});
    EXPECT_LT(RCF_CompareCGEFills(&a, &b, false), 0);
    EXPECT_EQ(RCF_CompareCGEFills(&a, &b, true), 0);
    // It is what a named palette's colour is known by.
    a.EditUniform().color.SetPaletteType(12);
    b.EditUniform().color.SetPaletteType(12);
    EXPECT_LT(RCF_CompareCGEFills(&a, &b, true), 0);
}

TEST(FillCompare, ScreensByBytesAndByWrappedOverprint) {
    CLR_SCREENSPEC a, b;
    b.overprint = 0xFFFFFFFFu;
    EXPECT_EQ(RCF_CompareScreenSpec(a, b), 1);
    EXPECT_EQ(RCF_CompareScreenSpec(b, a), -1);
    EXPECT_EQ(RCF_CompareScreenSpecNoOverprint(a, b), 0);
    EXPECT_EQ(RCF_CompareScreenSpecOverprint(a, b), 0);
    // 256 is 00 01 in bytes, less than 1, which is 01 00.
    a.frequency = 256;
    b.frequency = 1;
    EXPECT_LT(RCF_CompareScreenSpec(a, b), 0);
}

TEST(FillCompare, BitmapsBySizeThenBytesAndNoneFirst) {
    const HMEM small = MEMMANAlloc(4, true), same = MEMMANAlloc(4, true), large = MEMMANAlloc(5, true);
    const HMEM empty = MEMMANAlloc(0, true);
    EXPECT_EQ(RCF_CompareBitmaps(small, same), 0);
    static_cast<unsigned char*>(MEMMANLock(same))[3] = 200;
    MEMMANUnlock(same);
    EXPECT_LT(RCF_CompareBitmaps(small, same), 0);
    EXPECT_LT(RCF_CompareBitmaps(same, large), 0);
    EXPECT_LT(RCF_CompareBitmaps(nullptr, small), 0);
    EXPECT_EQ(RCF_CompareBitmaps(nullptr, empty), -1);
    EXPECT_GT(RCF_CompareBitmaps(empty, nullptr), 0);
    for (HMEM block : {small, same, large, empty})
        MEMMANFree(block);
}

TEST(FillCompare, TexturesThatAreAbsentStillCompareTheirFields) {
    CGE_TXRINFO a, b;
    a.resolution = 2;
    b.resolution = 1;
    EXPECT_GT(RCF_CompareTextureInfo(&a, &b), 0);
    b.present = 5;
    EXPECT_LT(RCF_CompareTextureInfo(&a, &b), 0);
}

TEST(FillCompare, HatchColorsWithoutAModelSortFirst) {
    CLR_COLORSPEC none, black, gray;
    black.MakeCMYKBlack();
    gray.MakeGray(3);
    EXPECT_EQ(FILLCompareHatchColors(none, black), -2);
    EXPECT_EQ(FILLCompareHatchColors(gray, none), 9);
    EXPECT_LT(FILLCompareHatchColors(black, gray), 0);
}

CGE_FILL MakeVector(std::size_t size, unsigned char last) {
    std::vector<std::byte> bytes(size);
    if (size != 0) bytes.back() = static_cast<std::byte>(last);
    CGE_FILL fill(FillVector);
    fill.EditVector().AdoptTmpFile(TMPCreateTmpFile(bytes));
    return fill;
}

TEST(FillCompare, VectorContentsByLengthThenBytesAcrossPieces) {
    EXPECT_LT(Order(CGE_FILL(FillVector), MakeVector(1, 0)), 0);
    EXPECT_LT(Order(MakeVector(16384, 9), MakeVector(16385, 0)), 0);
    for (std::size_t size : {16383u, 16384u, 16385u, 40000u}) {
        EXPECT_EQ(Order(MakeVector(size, 1), MakeVector(size, 1)), 0);
        EXPECT_LT(Order(MakeVector(size, 1), MakeVector(size, 200)), 0);
    }
}

TEST(FillCompare, ContentsCountAsEqualWhenThereIsNoMemoryToReadThem) {
    const CGE_FILL a = MakeVector(100, 1), b = MakeVector(100, 2);
    int order = -1, skipped = 0;
    testing_support::FailEachAllocation([&] { order = -1, order = RCF_CompareCGEFills(&a, &b, false); },
                                        [&] { skipped += order == 0; });
    EXPECT_EQ(skipped, 2);  // once for each buffer
    EXPECT_LT(order, 0);
}

TEST(FillCompare, DecideIsAskedFirstButNotAcrossKinds) {
    const CGE_FILL none, uniform(FillUniform);
    CGE_FILL other(FillUniform);
    other.EditUniform().screen.frequency = 61;
    int asked = 0;
    const auto always = [&](const CGE_FILL&, const CGE_FILL&) { return ++asked, std::optional<int>(7); };
    EXPECT_EQ(RCF_CompareCGEFills(none, uniform, always), -1);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(RCF_CompareCGEFills(uniform, other, always), 7);
    EXPECT_EQ(RCF_CompareCGEFills(uniform, uniform, {}), 0);
    const auto never = [](const CGE_FILL&, const CGE_FILL&) { return std::optional<int>(); };
    EXPECT_LT(RCF_CompareCGEFills(uniform, other, never), 0);
}

TEST(FillCompare, AsPooledEntriesImagesCompareByDigestAndVectorsByIdentifier) {
    testing_support::LeakCheck leaks;
    FillGenerator generator(5);
    const auto bitmap = [&](unsigned value, bool second) {
        CGE_FILL fill(FillColorBitmap);
        fill.EditColorBitmap().AdoptTmpFile(TMPRegisterPrivateData(generator.Image(value, second)));
        return fill;
    };
    EXPECT_EQ(RCF_CompareCGEFills(bitmap(1, false), bitmap(1, true), {}), 0);
    EXPECT_NE(RCF_CompareCGEFills(bitmap(1, false), bitmap(2, false), {}), 0);
    const CGE_FILL vector = MakeVector(10, 1);
    EXPECT_NE(RCF_CompareCGEFills(vector, vector, {}), 0);
}

}  // namespace
