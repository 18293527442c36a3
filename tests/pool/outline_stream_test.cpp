#include <gtest/gtest.h>

#include "fom/legacy_records.h"
#include "fom/outline_handle.h"
#include "fom/serialization.h"

#include "pool/stream_samples.h"
#include "support/outline_generator.h"

namespace {

using namespace stream_test;

class OutlineStream : public StreamTest {};

int Compare(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
    return CGE_OUTLINE::CompareTo(a, b, false);
}

TEST_F(OutlineStream, HasItsBytes) {
    for (const std::string name : {"solid", "right-arrow", "none"}) {
        SCOPED_TRACE(name);
        const CGE_OUTLINE outline = OutlineSample(name);
        const WRefCountOutline entry(&outline);
        EXPECT_EQ(outline.leftArrow, name == "solid" ? kArrow : nullptr);
        EXPECT_EQ(outline.rightArrow, name == "none" ? nullptr : kOtherArrow);
        EXPECT_EQ(Written(entry, 1250), Written(entry));
        for (const Version version : {Version(), Version(1200)}) {
            const Bytes& golden = GoldenOutlines().at(version ? name + "-1200" : name);
            EXPECT_EQ(ToHex(Written(entry, version)), ToHex(golden));
            const auto read = Read<WRefCountOutline>(golden, version);
            EXPECT_EQ(Compare(*read->GetCGEOutline(), outline), 0);
            EXPECT_EQ(Written(*read, version), golden);
        }
    }
}

TEST_F(OutlineStream, ReadingForgetsTheColourName) {
    MemoryFileStream stream = StreamOf(GoldenOutlines().at("solid"));
    WRefCountOutline entry(true);
    entry.SetColorName(L"goes");
    entry.ReadFrom(stream);
    EXPECT_EQ(entry.GetColorName(), nullptr);
}

TEST(OutlineStreamFormed, GeneratedOutlinesComeBackAsTheyWere) {
    testing_support::OutlineGenerator generator(3);
    for (int i = 0; i < 300; ++i) {
        const CGE_OUTLINE outline = generator.Make();
        udi::PersistentPtrRemapper remapper;
        MemoryFileStream stream;
        FOMOutlineSerialization::WriteTo(stream, outline, remapper);
        CGE_OUTLINE read;
        udi::PersistentPtrRemapper elsewhere;
        FOMOutlineSerialization::ReadFrom(stream, read, i % 2 == 0 ? remapper : elsewhere);
        ASSERT_TRUE(stream.IsGood());
        ASSERT_EQ(stream.GetRemaining(), 0u);
        if ((outline.type & 15) == OutlineNone)
            ASSERT_EQ(read.type, OutlineNone);
        else
            ASSERT_EQ(Compare(read, outline), 0);
    }
}

// An outline that is none, with arrowheads: their blocks are read past, not registered.
TEST_F(OutlineStream, NoOutlineHasNoArrowheads) {
    CGE_OUTLINE none = OutlineSample();
    none.type = OutlineNone;
    const HMEM own = none.leftArrow = BlockOf("not registered");
    EXPECT_EQ(
        Compare(*Read<WRefCountOutline>(Written(WRefCountOutline(&none)))->GetCGEOutline(), CGE_OUTLINE()),
        0);
    MEMMANFree(own);
    CGE_OUTLINE solid = OutlineSample();
    Bytes old = Written(WRefCountOutline(&solid), 1200);
    old[0] = std::byte{1};
    EXPECT_EQ(Compare(*Read<WRefCountOutline>(old, 1200)->GetCGEOutline(), CGE_OUTLINE()), 0);
}

TEST_F(OutlineStream, AnEmptyArrowheadIsNoneBefore1250) {
    const CGE_OUTLINE outline = OutlineSample();
    Bytes bytes = Written(WRefCountOutline(&outline), 1200);
    bytes.resize(CGE_OUTLINE_12xx::kSize);
    Append(bytes, {0, 0});
    const auto read = Read<WRefCountOutline>(bytes, 1200);
    EXPECT_EQ(read->GetCGEOutline()->leftArrow, nullptr);
    EXPECT_EQ(read->GetCGEOutline()->rightArrow, nullptr);
    EXPECT_EQ(read->GetCGEOutline()->width, 70);
}

TEST_F(OutlineStream, AHandleKeepsItsOutlineWhenTheStreamIsNotGood) {
    WRCOutlineList pool;
    WOutlineHandle handle(true, &pool);
    const CGE_OUTLINE outline = OutlineSample();
    const Bytes whole = Written(WRefCountOutline(&outline));
    MemoryFileStream cut = StreamOf({whole.begin(), whole.end() - 1});
    handle.ReadFrom(cut);
    EXPECT_FALSE(cut.IsGood());
    EXPECT_EQ(handle.GetCGEOutline()->width, 50);
    MemoryFileStream stream = StreamOf(whole);
    handle.ReadFrom(stream);
    EXPECT_EQ(handle.GetCGEOutline()->width, 70);
}

}  // namespace
