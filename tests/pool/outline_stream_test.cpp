#include <gtest/gtest.h>

#include "fom/legacy_records.h"
#include "fom/outline_handle.h"
#include "fom/serialization.h"

#include "pool/stream_samples.h"
#include "support/golden.h"
#include "support/outline_generator.h"

namespace {

using namespace stream_test;

class OutlineStream : public StreamTest {};

std::unique_ptr<WRefCountOutline> ReadOutline(Bytes bytes, Version version = {}) {
    MemoryFileStream stream = StreamOf(std::move(bytes), version);
    auto entry = std::make_unique<WRefCountOutline>(true);
    entry->SetColorName(L"goes");
    entry->AddReference(3);
    entry->ReadFrom(stream);
    EXPECT_TRUE(stream.IsGood());
    EXPECT_EQ(stream.GetRemaining(), 0u);
    EXPECT_EQ(entry->GetReference(), 0);
    EXPECT_EQ(entry->GetColorName(), nullptr);
    return entry;
}

int Compare(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
    return CGE_OUTLINE::CompareTo(a, b, false);
}

TEST_F(OutlineStream, HasItsBytes) {
    const Goldens goldens = testing_support::ReadGolden("outline_stream_records.txt");
    CGE_OUTLINE solid = OutlineSample(), right = OutlineSample(), none;
    right.leftArrow = nullptr;
    const std::pair<const char*, const CGE_OUTLINE*> samples[] = {
        {"solid", &solid}, {"right-arrow", &right}, {"none", &none}};
    for (const auto& [name, outline] : samples) {
        SCOPED_TRACE(name);
        const WRefCountOutline entry(outline);
        ExpectGolden(goldens, name, Written(entry));
        ExpectGolden(goldens, std::string(name) + "-1200", Written(entry, 1200));
        EXPECT_EQ(Written(entry, 1250), Written(entry));
        for (const Version version : {Version(), Version(1200)}) {
            const auto read = ReadOutline(Written(entry, version), version);
            EXPECT_EQ(Compare(*read->GetCGEOutline(), *outline), 0);
            EXPECT_EQ(Written(*read, version), Written(entry, version));
        }
    }
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
    EXPECT_EQ(Compare(*ReadOutline(Written(WRefCountOutline(&none)))->GetCGEOutline(), CGE_OUTLINE()), 0);
    MEMMANFree(own);
    CGE_OUTLINE solid = OutlineSample();
    Bytes old = Written(WRefCountOutline(&solid), 1200);
    old[0] = std::byte{1};
    EXPECT_EQ(Compare(*ReadOutline(old, 1200)->GetCGEOutline(), CGE_OUTLINE()), 0);
}

TEST_F(OutlineStream, AnEmptyArrowheadIsNoneBefore1250) {
    const CGE_OUTLINE outline = OutlineSample();
    Bytes bytes = Written(WRefCountOutline(&outline), 1200);
    bytes.resize(CGE_OUTLINE_12xx::kSize);
    Append(bytes, {0, 0});
    const auto read = ReadOutline(bytes, 1200);
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
